import QtQuick
import QtQuick.Templates as T
import Tarnwick

/// The prominent button of a view: a symbol, when it has one, and a text.
T.AbstractButton {
    id: root

    property string symbol
    property real textSize: 12
    /// The symbol follows the text.
    property bool symbolLast: false

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: 28
    horizontalPadding: 14
    opacity: enabled ? 1 : 0.45
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

    background: Rectangle {
        radius: Theme.radiusControl
        color: root.down ? Qt.darker(Theme.prominent, 1.25) : root.hovered ? Qt.darker(Theme.prominent, 1.1)
                                                                           : Theme.prominent
        // The ring stands off the fill, so that it shows on it.
        Rectangle {
            anchors.fill: parent
            anchors.margins: -3
            visible: root.visualFocus
            radius: Theme.radiusControl + 3
            color: "transparent"
            border.width: 2
            border.color: Theme.blue
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
