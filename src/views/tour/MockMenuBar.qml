pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick

/// The bar of the desktop as it could look, with a status item that reads `preview`.
Rectangle {
    id: root

    required property tourWords words
    required property string preview

    implicitHeight: 30
    radius: Theme.radiusControl
    color: Theme.field
    border.color: Theme.layer(0.14)
    Accessible.role: Accessible.StaticText
    Accessible.name: preview

    Row {
        id: menus

        x: 10
        height: parent.height
        spacing: 10

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: root.words.barSymbol
            color: Theme.primary
        }
        Repeater {
            model: root.words.barMenus
            delegate: PlainText {
                required property int index
                required property string modelData

                anchors.verticalCenter: parent?.verticalCenter
                text: modelData
                font.weight: index === 0 ? Font.Bold : Font.Normal
                Accessible.ignored: true
            }
        }
    }
    Symbol {
        anchors.right: item.left
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        name: "thermometer.medium"
        color: Theme.primary
    }
    FigureText {
        id: item

        objectName: "preview"
        anchors.right: parent.right
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(implicitWidth, root.width - menus.x - menus.width - 40)
        text: root.preview
        font.weight: Font.Medium
    }
}
