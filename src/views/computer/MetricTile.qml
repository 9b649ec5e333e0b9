import QtQuick
import Tarnwick

/// A live metric to press: it pins itself to the status item, or unpins itself.
Pressable {
    id: root

    required property macTile tile

    text: tile.title
    implicitHeight: 80
    Accessible.role: Accessible.CheckBox
    Accessible.name: tile.title
    Accessible.description: tile.spoken
    Accessible.checkable: true
    Accessible.checked: tile.isPinned
    radius: Theme.radiusCard
    fill: tile.isPinned ? Theme.translucent(Theme.blue, 0.08) : Theme.layer(0.03)
    edge: tile.isPinned ? Theme.translucent(Theme.blue, 0.4) : "transparent"
    help: tile.help

    contentItem: Item {
        PlainText {
            x: 10
            y: 9
            width: parent.width - x - (mark.visible ? mark.width + 10 : 10)
            text: root.tile.title
            size: 10
            color: Theme.secondary
            Accessible.ignored: true
        }
        Symbol {
            id: mark

            x: parent.width - width - 9
            y: 9
            visible: root.tile.isPinned
            name: "pin.fill"
            side: 12
            color: Theme.blue
        }
        PlainText {
            x: 10
            y: 23
            width: parent.width - 20
            text: root.tile.value
            size: 19
            font.weight: Font.Bold
            color: Theme.figureColor(root.tile.role)
            Accessible.ignored: true
        }
        PlainText {
            x: 10
            y: 47
            width: parent.width - 20
            text: root.tile.subtitle
            size: 9
            color: Theme.secondary
            Accessible.ignored: true
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
