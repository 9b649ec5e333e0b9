import QtQuick
import QtQuick.Templates as T
import Tarnwick

/// A whole block to press, which leads elsewhere.
T.AbstractButton {
    id: root

    implicitHeight: 36
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

    background: Rectangle {
        radius: Theme.radiusCard
        color: root.down ? Theme.layer(0.12) : root.hovered ? Theme.layer(0.07) : Theme.layer(0.04)
        border.width: root.visualFocus ? 2 : 0
        border.color: Theme.blue
    }
    contentItem: Item {
        Symbol {
            id: mark

            x: 12
            anchors.verticalCenter: parent.verticalCenter
            name: "sparkles"
            side: 16
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
            side: 12
            color: Theme.secondary
        }
    }
}
