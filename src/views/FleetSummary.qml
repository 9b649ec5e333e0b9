pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick

/// How many servers of a large fleet are in which group; pressed, a group is shown alone, and pressed again no longer.
Row {
    id: root

    required property PopoverModel popover

    spacing: 6
    Accessible.role: Accessible.Grouping
    Accessible.name: popover.words.counts

    Repeater {
        model: root.popover.content.countCount
        delegate: CapsuleButton {
            required property int index
            readonly property fleetCount group: root.popover.content.count(index)

            implicitHeight: 22
            radius: Theme.radiusControl
            text: group.text
            help: group.isChosen ? root.popover.words.showAll : root.popover.words.showGroup
            symbol: group.symbol
            tint: enabled ? Theme.textColor(group.role) : Theme.tertiary
            textWeight: group.isChosen ? Font.DemiBold : Font.Normal
            enabled: group.isEnabled
            fill: group.isChosen ? Theme.pinned : Theme.layer(0.04)
            edge: group.isChosen ? Theme.pinnedEdge : "transparent"
            Accessible.checkable: true
            Accessible.checked: group.isChosen
            onClicked: root.popover.toggleGroup(index)
        }
    }
}
