import QtQuick
import Tarnwick

/// The heading of a section: a symbol and a title.
Item {
    id: root

    property string symbol
    property color tint: Theme.primary
    property string text
    /// Where a text at the line's end may begin.
    readonly property real end: title.x + title.width + 8

    implicitHeight: 18

    Symbol {
        anchors.verticalCenter: parent.verticalCenter
        name: root.symbol
        color: root.tint
    }
    PlainText {
        id: title

        x: 20
        anchors.verticalCenter: parent.verticalCenter
        text: root.text
        size: 12
        font.weight: Font.DemiBold
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
}
