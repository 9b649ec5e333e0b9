import QtQuick
import Tarnwick

/// The prominent button of a view: a symbol, when it has one, and a text.
Pressable {
    id: root

    property string symbol
    property real textSize: 12
    /// The symbol follows the text.
    property bool symbolLast: false

    implicitHeight: 28
    horizontalPadding: 14
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
        textSize: root.textSize
        textWeight: Font.DemiBold
        tint: Theme.prominentText
        symbolLast: root.symbolLast
    }
}
