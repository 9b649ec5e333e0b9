import QtQuick
import Tarnwick

/// A checkbox as wide as its line, with a label and, at the end of the line, an optional detail. The toolkit's own
/// checkbox leaks memory with each instance that is made while a screen reader runs.
Pressable {
    id: root

    property string symbol
    property color symbolTint: Theme.primary
    property string detail
    property color detailTint: Theme.secondary
    property int textWeight: Font.Normal

    implicitHeight: 22
    spacing: 8
    leftPadding: 16 + spacing
    checkable: true
    Accessible.role: Accessible.CheckBox

    background: null
    indicator: Rectangle {
        y: (root.height - height) / 2
        width: 16
        height: 16
        radius: 4
        color: root.checked ? Theme.prominent : Theme.field
        border.width: root.checked ? 0 : 1
        border.color: Theme.fieldEdge

        Symbol {
            anchors.centerIn: parent
            visible: root.checked
            name: "checkmark"
            side: 12
            color: Theme.prominentText
        }
        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: root.down ? Theme.layer(0.14) : root.hovered ? Theme.layer(0.06) : "transparent"
        }
        FocusRing {
            visible: root.visualFocus
        }
    }
    contentItem: Item {
        implicitWidth: label.implicitWidth + 8 + detail.implicitWidth
        implicitHeight: label.implicitHeight

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.symbol !== ""
            name: root.symbol
            color: root.symbolTint
        }
        PlainText {
            id: label

            x: root.symbol !== "" ? 22 : 0
            anchors.verticalCenter: parent.verticalCenter
            width: detail.x - 8 - x
            text: root.text
            size: 12
            font.weight: root.textWeight
            Accessible.ignored: true
        }
        PlainText {
            id: detail

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            text: root.detail
            color: root.detailTint
        }
    }
}
