import QtQuick
import Tarnwick

/// A bordered button: a symbol, when it has one, and a text.
Pressable {
    id: root

    property string symbol
    property bool isLarge: false
    property real textSize: isLarge ? 12 : 11
    property color tint: Theme.primary

    implicitHeight: isLarge ? 28 : 24
    horizontalPadding: isLarge ? 14 : 10
    opacity: enabled ? 1 : 0.45
    fill: Theme.button
    edge: Theme.buttonEdge
    hoverLayer: 0.04
    pressLayer: 0.1

    // A soft edge, like a shadow, below the background, whose z is -1.
    Rectangle {
        y: 1
        z: -2
        width: root.width
        height: root.height
        radius: root.radius
        color: Theme.layer(0.06)
        visible: !Theme.dark
    }

    contentItem: SymbolLabel {
        symbol: root.symbol
        text: root.text
        textSize: root.textSize
        tint: root.tint
    }
}
