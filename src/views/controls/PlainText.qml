import QtQuick
import Tarnwick

/// One elided line of text, never read as markup.
Text {
    property alias size: root.font.pixelSize

    id: root
    textFormat: Text.PlainText
    elide: Text.ElideRight
    maximumLineCount: 1
    horizontalAlignment: Text.AlignLeft
    verticalAlignment: Text.AlignVCenter
    color: Theme.primary
    font.family: Theme.family
    font.pixelSize: 11
}
