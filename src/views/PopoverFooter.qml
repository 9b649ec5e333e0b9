pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick

/// The popover's foot: when all servers were last refreshed, and the links.
Band {
    id: root

    required property PopoverModel popover

    implicitHeight: 32
    isFoot: true
    color: Theme.layer(0.02)

    FigureText {
        x: 14
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(implicitWidth, links.x - x - 8)
        text: root.popover.content.updatedText
        size: 10
        color: Theme.secondary
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    Row {
        id: links

        anchors.right: parent.right
        anchors.rightMargin: 14
        anchors.verticalCenter: parent.verticalCenter
        spacing: 6

        Repeater {
            model: root.popover.links
            delegate: CapsuleButton {
                required property footerLink modelData

                text: modelData.caption
                help: modelData.help
                symbol: modelData.symbol
                textWeight: modelData.isEmphasized ? Font.Medium : Font.Normal
                onClicked: root.popover.open(modelData.address)
            }
        }
    }
}
