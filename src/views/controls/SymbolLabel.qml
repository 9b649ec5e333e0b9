import QtQuick
import Tarnwick

/// A symbol, when it has one, beside a line of text; together in the middle when there is more room than they need.
Item {
    id: root

    property string symbol
    property string text
    property color tint: Theme.primary
    property color symbolTint: tint
    property real textSize: 11
    property int textWeight: Font.Normal
    property real symbolSize: 16
    property bool symbolLast: false
    property alias spacing: row.spacing

    readonly property real symbolRoom: symbol !== "" ? symbolSize + row.spacing : 0

    implicitWidth: symbolRoom + label.implicitWidth
    implicitHeight: Math.max(symbolSize, label.implicitHeight)

    Row {
        id: row

        x: Math.round((root.width - width) / 2)
        height: root.height
        spacing: 4
        // To read one name of Qt's namespace in a binding loads all of them, for as long as the program runs.
        LayoutMirroring.enabled: root.symbolLast

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.symbol !== ""
            name: root.symbol
            color: root.symbolTint
            side: root.symbolSize
        }
        FigureText {
            id: label

            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, root.width - root.symbolRoom)
            text: root.text
            size: root.textSize
            font.weight: root.textWeight
            color: root.tint
        }
    }
}
