pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick

/// The containers bar of a card and, while it is open, the list below it.
Column {
    id: root

    required property serverCardContent content
    required property CardActions actions
    /// The part of this item that the list of cards shows.
    required property real shownTop
    required property real shownHeight
    /// 0 folded, 1 open.
    property real opened: content.isExpanded ? 1 : 0
    readonly property bool isFolding: opened > 0 && opened < 1

    Behavior on opened {
        NumberAnimation {
            duration: Theme.reorderDuration
            easing.type: Easing.InOutQuad
        }
    }

    Divider {
        x: -12
        width: root.width + 24
    }
    CardRow {
        x: -6
        width: root.width + 12
        text: root.content.containersText
        symbol: "shippingbox.fill"
        endText: root.content.expandText
        endSymbol: root.content.expandSymbol
        endTint: Theme.blue
        onClicked: root.actions.toggleExpanded(root.content.id)
    }
    Repeater {
        model: root.opened > 0 ? 1 : 0
        delegate: Item {
            id: fold

            width: root.width
            height: Math.round(list.height * root.opened)
            opacity: root.opened
            clip: root.opened < 1

            ContainerListView {
                id: list

                width: parent.width
                card: root.content
                actions: root.actions
                shownTop: root.shownTop - fold.y
                shownHeight: root.shownHeight
            }
        }
    }
}
