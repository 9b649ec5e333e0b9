import QtQuick
import Tarnwick

/// A live metric to press: it pins itself to the status item, or unpins itself.
Pressable {
    id: root

    required property macTile tile

    text: tile.title
    implicitHeight: 80
    radius: Theme.radiusCard
    fill: tile.isPinned ? Theme.pinned : Theme.layer(0.03)
    edge: tile.isPinned ? Theme.pinnedEdge : "transparent"
    help: tile.help
    Accessible.role: Accessible.CheckBox
    Accessible.name: tile.title
    Accessible.description: tile.spoken
    Accessible.checkable: true
    Accessible.checked: tile.isPinned

    contentItem: Item {
        // Behind the figure alone: smaller text stays clear of it.
        Sparkline {
            y: 22
            width: parent.width
            height: 24
            visible: root.tile.trend.text !== ""
            opacity: 0.22
            trend: root.tile.trend
            color: Theme.figureColor(root.tile.role)
        }
        MetricLines {
            x: 10
            y: 9
            width: parent.width - 20
            tile: root.tile
        }
        PlainText {
            x: 10
            y: 60
            width: parent.width - 20
            text: root.tile.hint
            size: 9
            color: Theme.textColor(ColorRole.Blue)
            Accessible.ignored: true
        }
    }
}
