import QtQuick
import Tarnwick

/// One container: state, name, image, status, and its two buttons.
Rectangle {
    id: root

    required property containerRowContent content
    required property string restartHelp
    signal shellRequested
    signal restartRequested

    implicitHeight: 38
    radius: Theme.radiusRow
    color: Theme.layer(0.04)
    Accessible.role: Accessible.ListItem
    Accessible.name: content.name
    Accessible.description: content.stateWord

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

        PlainText {
            width: Math.min(implicitWidth, parent.width)
            text: root.content.name
            font.weight: Font.DemiBold
        }
        PlainText {
            width: Math.min(implicitWidth, parent.width)
            text: root.content.image
            size: 10
            color: Theme.secondary
        }
    }
    PlainText {
        id: status

        anchors.right: buttons.left
        anchors.rightMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(implicitWidth, root.width * 0.4)
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
                text: root.restartHelp
                symbol: "arrow.clockwise"
                tint: Theme.secondary
                activeTint: Theme.primary
                enabled: root.content.restartEnabled
                busy: root.content.restarting
                onClicked: root.restartRequested()
            }
        }
    }
}
