import QtQuick
import QtQuick.Templates as T
import Tarnwick

/// A bordered button: a symbol, when it has one, and a text.
T.AbstractButton {
    id: root

    property string symbol
    property string help
    property real textSize: 11
    property color tint: Theme.primary

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: 24
    horizontalPadding: 10
    opacity: enabled ? 1 : 0.45
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

    background: Item {
        // A soft edge below stands for the shadow.
        Rectangle {
            y: 1
            width: parent.width
            height: parent.height
            radius: Theme.radiusControl
            color: Theme.layer(0.06)
            visible: !Theme.dark
        }
        Rectangle {
            anchors.fill: parent
            radius: Theme.radiusControl
            color: Theme.button
            border.width: root.visualFocus ? 2 : 1
            border.color: root.visualFocus ? Theme.blue : Theme.buttonEdge
        }
        Rectangle {
            anchors.fill: parent
            radius: Theme.radiusControl
            color: root.down ? Theme.layer(0.1) : root.hovered ? Theme.layer(0.04) : "transparent"
        }
    }
    contentItem: SymbolLabel {
        symbol: root.symbol
        text: root.text
        textSize: root.textSize
        tint: root.tint
    }

    HelpTip {
        text: root.help
        wanted: root.hovered || root.visualFocus
    }
}
