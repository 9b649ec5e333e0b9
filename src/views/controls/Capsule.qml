import QtQuick
import Tarnwick

/// A small label on a rounded tint: a symbol, when it has one, and a text.
Rectangle {
    id: root

    property string symbol
    property string text
    property color tint: Theme.secondary
    property real textSize: 10
    property int textWeight: Font.Normal
    property real padding: 6

    implicitWidth: label.implicitWidth + 2 * padding
    implicitHeight: 16
    radius: 5
    color: Theme.layer(0.08)
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    SymbolLabel {
        id: label

        anchors.centerIn: parent
        width: Math.min(implicitWidth, root.width - 2 * root.padding)
        symbol: root.symbol
        text: root.text
        tint: root.tint
        textSize: root.textSize
        textWeight: root.textWeight
        symbolSize: 12
    }
}
