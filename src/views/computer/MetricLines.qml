import QtQuick
import Tarnwick

/// The title, value and subtitle of a live metric, and the mark of a pinned one.
Item {
    id: root

    required property macTile tile
    property real subtitleTop: 38

    PlainText {
        width: root.width - (mark.visible ? mark.width : 0)
        text: root.tile.title
        size: 10
        color: Theme.secondary
        Accessible.ignored: true
    }
    Symbol {
        id: mark

        x: root.width - width + 1
        visible: root.tile.isPinned
        name: "pin.fill"
        side: 12
        color: Theme.blue
    }
    FigureText {
        y: 14
        width: root.width
        text: root.tile.value
        size: 19
        font.weight: Font.Bold
        color: Theme.figureColor(root.tile.role)
    }
    FigureText {
        y: root.subtitleTop
        width: root.width
        text: root.tile.subtitle
        size: 9
        color: Theme.secondary
    }
}
