import QtQuick
import Tarnwick

/// One container: state, name, image, status, and its two buttons. In place of the image it says why an action failed, and
/// in place of all but the state it asks before it is stopped.
Rectangle {
    id: root

    required property containerRowContent content
    required property cardWords words
    readonly property bool asks: content.question !== ""
    readonly property bool hasFailed: content.failure !== ""
    signal shellRequested
    signal restartRequested
    signal stopConfirmed
    signal stopCancelled
    signal menuRequested(point position)

    implicitHeight: 38
    radius: Theme.radiusRow
    color: Theme.layer(0.04)
    Accessible.role: Accessible.ListItem
    Accessible.name: content.name
    Accessible.description: content.question || content.failure || content.stateWord
    Keys.onMenuPressed: menuRequested(Qt.point(24, 30))
    Keys.onPressed: event => {
        if (event.key === Qt.Key_F10 && event.modifiers & Qt.ShiftModifier) {
            event.accepted = true;
            menuRequested(Qt.point(24, 30));
        }
    }

    TapHandler {
        acceptedButtons: Qt.RightButton
        gesturePolicy: TapHandler.ReleaseWithinBounds // keeps the press from the card, which has a menu of its own
        onTapped: eventPoint => root.menuRequested(eventPoint.position)
    }

    Rectangle {
        id: dot

        x: 8
        anchors.verticalCenter: parent.verticalCenter
        width: 7
        height: 7
        radius: 3.5
        color: Theme.color(root.content.dotRole)
    }
    Column {
        id: names

        anchors.left: dot.right
        anchors.leftMargin: 8
        anchors.right: status.left
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        visible: !root.asks

        PlainText {
            width: Math.min(implicitWidth, parent.width)
            text: root.content.name
            font.weight: Font.DemiBold
        }
        PlainText {
            width: Math.min(implicitWidth, parent.width)
            text: root.hasFailed ? root.content.failure : root.content.image
            size: 10
            color: root.hasFailed ? Theme.textColor(ColorRole.Red) : Theme.secondary

            HoverHandler {
                id: pointer
            }
            HelpTip {
                text: root.content.failure
                wanted: pointer.hovered
            }
        }
    }
    PlainText {
        id: status

        anchors.right: buttons.left
        anchors.rightMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(implicitWidth, root.width * 0.4)
        visible: !root.asks
        text: root.content.status
        size: 10
        color: Theme.secondary
    }
    Row {
        id: buttons

        anchors.right: parent.right
        anchors.rightMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2
        visible: !root.asks

        DisabledHelp {
            IconButton {
                text: root.content.shellHelp
                symbol: "terminal"
                tint: root.content.shellEnabled ? Theme.blue : Theme.translucent(Theme.secondary, Theme.secondary.a * 0.3)
                enabled: root.content.shellEnabled
                pales: false
                onClicked: root.shellRequested()
            }
        }
        DisabledHelp {
            IconButton {
                id: restart

                text: root.words.restart
                symbol: "arrow.clockwise"
                tint: Theme.secondary
                activeTint: Theme.primary
                enabled: root.content.restartEnabled
                busy: root.content.restarting
                onClicked: root.restartRequested()
            }
        }
    }

    ContainerQuestion {
        anchors.left: dot.right
        anchors.leftMargin: 8
        anchors.right: parent.right
        anchors.rightMargin: 7
        height: parent.height
        content: root.content
        words: root.words
        onConfirmed: root.stopConfirmed()
        onCancelled: root.stopCancelled()
        onVisibleChanged: {
            if (!visible && activeFocus)
                restart.forceActiveFocus(Qt.TabFocusReason);
        }
    }
}
