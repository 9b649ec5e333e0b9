import QtQuick
import QtQuick.Templates as T
import Tarnwick

/// A help text in a bubble below this item, or above it where there is no room.
Item {
    id: root

    required property string text

    T.ToolTip {
        parent: root
        visible: true
        delay: 600
        margins: 6
        horizontalPadding: 8
        verticalPadding: 4
        implicitWidth: Math.min(implicitContentWidth + leftPadding + rightPadding, 340)
        implicitHeight: implicitContentHeight + topPadding + bottomPadding
        x: (root.width - width) / 2
        y: root.height + 4
        closePolicy: T.Popup.NoAutoClose

        contentItem: PlainText {
            text: root.text
        }
        background: Rectangle {
            radius: Theme.radiusControl
            color: Theme.menu
            border.color: Theme.layer(0.14)
        }
    }
}
