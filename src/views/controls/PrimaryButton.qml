import QtQuick
import Tarnwick

/// The prominent button of a view: a symbol, when it has one, and a text.
Pressable {
    id: root

    property string symbol
    property bool isLarge: false
    /// The symbol follows the text.
    property bool symbolLast: false

    implicitHeight: isLarge ? 28 : 24
    horizontalPadding: isLarge ? 14 : 10
    opacity: enabled ? 1 : 0.45

    background: Rectangle {
        radius: root.radius
        color: root.down ? Qt.darker(Theme.prominent, 1.25) : root.hovered ? Qt.darker(Theme.prominent, 1.1)
                                                                           : Theme.prominent

        FocusRing {
            visible: root.visualFocus
        }
    }
    contentItem: SymbolLabel {
        symbol: root.symbol
        text: root.text
        textSize: root.isLarge ? 12 : 11
        textWeight: Font.DemiBold
        tint: Theme.prominentText
        symbolLast: root.symbolLast
    }
}
