import QtQuick
import Tarnwick

/// A step's title and the line below it, in the middle.
Column {
    id: root

    required property tourStep step
    property real titleSize: 14
    property real lineSize: 11
    property real longestLine: width

    spacing: titleSize > 14 ? 8 : 4

    PlainText {
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        text: root.step.title
        size: root.titleSize
        font.weight: Font.Bold
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    PlainText {
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(parent.width, root.longestLine)
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        maximumLineCount: 2
        lineHeight: 1.2
        text: root.step.line
        size: root.lineSize
        color: Theme.secondary
    }
}
