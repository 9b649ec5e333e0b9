import QtQuick
import Tarnwick

/// A full-width row of a card to press: a symbol, a text, a word and a symbol at the end.
Pressable {
    id: root

    property string symbol
    property string endText
    property string endSymbol
    property color endTint: Theme.secondary

    implicitHeight: 32

    Symbol {
        id: start

        x: 4
        anchors.verticalCenter: parent.verticalCenter
        name: root.symbol
        color: Theme.blue
    }
    PlainText {
        anchors.left: start.right
        anchors.leftMargin: 6
        anchors.right: word.left
        anchors.rightMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        text: root.text
        font.weight: Font.Medium
    }
    PlainText {
        id: word

        anchors.right: end.left
        anchors.rightMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        text: root.endText
        color: Theme.secondary
    }
    Symbol {
        id: end

        anchors.right: parent.right
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        name: root.endSymbol
        color: root.endTint
    }
}
