pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick

/// The tiles of a group, three in a row.
Row {
    id: root

    required property macTileGroup group
    required property PinListModel pins

    spacing: 8

    Repeater {
        model: root.group.count
        delegate: MetricTile {
            required property int index

            objectName: text
            width: (root.width - 2 * root.spacing) / 3
            tile: root.group.tile(index)
            onClicked: root.pins.toggle(tile.item)
        }
    }
}
