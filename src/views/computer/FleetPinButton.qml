import QtQuick
import Tarnwick

/// The fleet summary to press: it pins itself to the status item, or unpins itself.
Pressable {
    id: root

    required property fleetPinRow fleet

    text: fleet.title
    implicitHeight: 32
    Accessible.role: Accessible.CheckBox
    Accessible.name: fleet.title
    Accessible.description: fleet.example
    Accessible.checkable: true
    Accessible.checked: fleet.isPinned
    radius: Theme.radiusRow
    fill: fleet.isPinned ? Theme.pinned : Theme.layer(0.03)
    edge: fleet.isPinned ? Theme.pinnedEdge : "transparent"

    contentItem: Item {
        Symbol {
            x: 10
            anchors.verticalCenter: parent.verticalCenter
            name: root.fleet.symbol
            color: root.fleet.isPinned ? Theme.blue : Theme.translucent(Theme.secondary, Theme.secondary.a / 2)
        }
        PlainText {
            x: 32
            anchors.verticalCenter: parent.verticalCenter
            width: example.x - x - 8
            text: root.fleet.title
            size: 12
            font.weight: Font.Medium
            Accessible.ignored: true
        }
        PlainText {
            id: example

            x: parent.width - width - 10
            anchors.verticalCenter: parent.verticalCenter
            text: root.fleet.example
            color: Theme.secondary
            Accessible.ignored: true
        }
    }
}
