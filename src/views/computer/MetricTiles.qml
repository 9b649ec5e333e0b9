pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick

/// Three tiles in a row.
Row {
    id: root

    required property macInfoContent content
    /// The first one's place among the content's tiles.
    required property int first
    signal pressed(int pinRow)

    spacing: 8

    Repeater {
        model: 3
        delegate: MetricTile {
            required property int index

            objectName: text
            width: (root.width - 2 * root.spacing) / 3
            tile: root.content.tile(root.first + index)
            onClicked: root.pressed(tile.pinRow)
        }
    }
}
