import QtQuick
import Tarnwick

/// A card's head: the area to drag it by, badges and buttons.
Item {
    id: root

    required property serverCardContent content
    required property CardActions actions
    /// The pointer, in scene coordinates, while the card is dragged.
    signal dragMoved(point position)
    signal dragEnded

    implicitHeight: 31

    CardHandle {
        id: handle

        width: Math.min(implicitWidth, buttons.x - (badges.width > 0 ? badges.width + 12 : 6))
        height: parent.height
        content: root.content
        words: root.actions.words
        onDragBegan: root.actions.beginDrag(root.content.id)
        onDragMoved: position => root.dragMoved(position)
        onDragLeft: root.actions.dragOut()
        onDragEnded: {
            root.actions.endDrag();
            root.dragEnded();
        }
    }
    Row {
        id: badges

        anchors.left: handle.right
        anchors.leftMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        spacing: 6

        CapsuleButton {
            visible: root.content.temperatureText !== ""
            text: root.content.temperatureText
            help: root.actions.words.hardware
            symbol: "thermometer.medium"
            textWeight: Font.DemiBold
            tint: Theme.textColor(ColorRole.Orange)
            fill: Theme.translucent(Theme.orange, 0.1)
            onClicked: root.actions.showHardware()
        }
        Capsule {
            visible: root.content.latencyText !== ""
            text: root.content.latencyText

            HoverHandler {
                id: latencyPointer
            }
            HelpTip {
                trend: root.content.latencyTrend
                wanted: latencyPointer.hovered
            }
        }
    }
    Row {
        id: buttons

        anchors.right: parent.right
        anchors.rightMargin: -4
        anchors.verticalCenter: parent.verticalCenter

        IconButton {
            text: root.content.pauseHelp
            symbol: root.content.pauseSymbol
            tint: Theme.color(root.content.pauseRole)
            activeTint: root.content.isEnabled ? Theme.primary : tint
            onClicked: root.actions.togglePause(root.content.id)
        }
        IconButton {
            visible: root.content.isEnabled
            text: root.actions.words.openSSH
            symbol: "terminal"
            tint: Theme.secondary
            activeTint: Theme.primary
            onClicked: root.actions.openSSH(root.content.id)
        }
        IconButton {
            visible: root.content.isEnabled
            text: root.actions.words.refresh
            symbol: "arrow.clockwise"
            tint: Theme.secondary
            activeTint: Theme.primary
            onClicked: root.actions.refresh(root.content.id)
        }
        IconButton {
            text: root.actions.words.remove
            symbol: "trash"
            tint: Theme.secondary
            activeTint: Theme.textColor(ColorRole.Red)
            onClicked: root.actions.remove(root.content.id)
        }
    }
}
