pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick

/// A group of live metrics, three in a row.
Block {
    id: root

    required property macTileGroup group

    SectionHeading {
        width: parent.width
        symbol: root.group.symbol
        tint: Theme.color(root.group.role)
        text: root.group.heading
    }
    Row {
        id: row

        width: parent.width
        spacing: 8

        Repeater {
            model: root.group.count
            delegate: Rectangle {
                id: box

                required property int index
                readonly property macTile tile: root.group.tile(index)

                width: (row.width - 2 * row.spacing) / 3
                height: 66
                radius: Theme.radiusRow
                color: Theme.layer(0.03)
                Accessible.role: Accessible.StaticText
                Accessible.name: tile.title
                Accessible.description: tile.spoken

                MetricLines {
                    x: 10
                    y: 7
                    width: parent.width - 20
                    subtitleTop: 39
                    tile: box.tile
                }
            }
        }
    }
}
