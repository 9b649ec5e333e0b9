import QtQuick
import Tarnwick

/// A block that is a button.
Pressable {
    id: root

    implicitHeight: 36
    radius: Theme.radiusCard
    fill: Theme.layer(0.04)

    contentItem: Item {
        Symbol {
            id: mark

            x: 12
            anchors.verticalCenter: parent.verticalCenter
            name: "sparkles"
            color: Theme.purple
        }
        PlainText {
            anchors.left: mark.right
            anchors.leftMargin: 6
            anchors.verticalCenter: parent.verticalCenter
            text: root.text
            size: 12
            font.weight: Font.DemiBold
            Accessible.ignored: true
        }
        Symbol {
            anchors.right: parent.right
            anchors.rightMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            name: "chevron.right"
            color: Theme.secondary
        }
    }
}
