import QtQuick
import QtQuick.Templates as T
import Tarnwick

/// A text that leads to a page on the web.
T.AbstractButton {
    id: root

    implicitWidth: label.implicitWidth
    implicitHeight: 18
    Accessible.role: Accessible.Link
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

    background: Rectangle {
        x: -4
        width: root.width + 8
        radius: Theme.radiusControl
        color: root.down ? Theme.layer(0.08) : "transparent"
        border.width: root.visualFocus ? 2 : 0
        border.color: Theme.blue
    }
    contentItem: PlainText {
        id: label

        text: root.text
        font.weight: Font.Medium
        font.underline: root.hovered
        color: Theme.textColor(ColorRole.Blue)
        Accessible.ignored: true
    }
}
