pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick

/// One entry of the fleet.
Item {
    id: root

    required property serverCardContent content
    required property CardActions actions
    /// Whether a change of its height is animated.
    property bool followsSlowly: false
    /// The pointer, in scene coordinates, while the card is dragged by its head.
    signal dragMoved(point position)
    signal dragEnded

    function openMenu(position: point) {
        const popup = menu.createObject(root, {
            "x": position.x,
            "y": position.y,
            "entries": actions.menu(content.id),
            "name": content.name
        }) as CardMenuPopup;
        popup.open();
    }

    readonly property Flickable list: ListView.view
    readonly property real naturalHeight: body.y + body.height + body.bottomRoom
    property real shownHeight: naturalHeight

    Behavior on shownHeight {
        enabled: root.followsSlowly && !body.isFolding
        NumberAnimation {
            duration: Theme.listDuration
            easing.type: Easing.InOutQuad
        }
    }

    implicitHeight: shownHeight
    activeFocusOnTab: true
    Accessible.role: Accessible.ListItem
    Accessible.name: content.name
    Accessible.description: content.healthTrend.text || content.statusWord
    Keys.onMenuPressed: openMenu(Qt.point(24, 40))
    Keys.onPressed: event => {
        if (event.key === Qt.Key_F10 && event.modifiers & Qt.ShiftModifier) {
            event.accepted = true;
            openMenu(Qt.point(24, 40));
        }
    }

    Rectangle {
        anchors.fill: parent
        clip: root.height < root.naturalHeight
        radius: Theme.radiusCard
        opacity: root.content.isDragged ? 0.6 : 1
        scale: root.content.isDragged ? 0.98 : 1
        color: Theme.layer(root.content.isDragged ? 0.08 : 0.04)
        border.width: root.content.isDragged ? 1.5 : root.activeFocus ? 2 : 1
        border.color: root.content.isDragged ? Theme.translucent(Theme.blue, 0.6)
                                             : root.activeFocus ? Theme.blue : Theme.layer(0.08)

        TapHandler {
            acceptedButtons: Qt.RightButton
            onTapped: eventPoint => root.openMenu(eventPoint.position)
        }
        CardHeader {
            x: 12
            y: 10
            width: parent.width - 24
            content: root.content
            actions: root.actions
            onDragMoved: position => root.dragMoved(position)
            onDragEnded: root.dragEnded()
        }
        CardBody {
            id: body

            x: 12
            y: 49
            width: parent.width - 24
            content: root.content
            actions: root.actions
            shownTop: root.list ? root.list.contentY - root.y - body.y : 0
            shownHeight: root.list?.height ?? Infinity
        }
    }

    Component {
        id: menu

        CardMenuPopup {
            card: root.content
            actions: root.actions
            onClosed: destroy()
        }
    }
}
