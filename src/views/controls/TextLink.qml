import QtQuick
import Tarnwick

/// A text to press, of less weight than a button: a link to a page on the web, say.
Pressable {
    id: root

    implicitHeight: 18
    leftInset: -4
    rightInset: -4
    hoverLayer: 0
    Accessible.role: Accessible.Link

    contentItem: PlainText {
        text: root.text
        font.weight: Font.Medium
        font.underline: root.hovered
        color: Theme.textColor(ColorRole.Blue)
        Accessible.ignored: true
    }
}
