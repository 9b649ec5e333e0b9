pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick

/// The popover's foot: when all servers were last refreshed, and the links; below, why that is not sooner.
Band {
    id: root

    required property PopoverModel popover

    readonly property real lineHeight: 32

    implicitHeight: slow.text ? lineHeight + slow.height + 4 : lineHeight
    isFoot: true
    color: Theme.layer(0.02)

    FigureText {
        x: 14
        y: (root.lineHeight - height) / 2
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
        y: (root.lineHeight - height) / 2
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
    PlainText {
        id: slow

        x: 14
        y: root.lineHeight - 4
        width: root.width - 28
        height: 16
        text: root.popover.content.slowText
        visible: text
        size: 10
        color: Theme.secondary
    }
}
