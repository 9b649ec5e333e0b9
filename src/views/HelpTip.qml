pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T

/// The help text of a control; exists only while it is wanted.
Loader {
    id: root

    required property string text
    property bool wanted: false

    active: wanted && text !== ""
    sourceComponent: T.ToolTip {
        id: tip

        parent: root.parent
        visible: true
        text: root.text
        delay: 600
        margins: 6
        horizontalPadding: 8
        verticalPadding: 4
        implicitWidth: Math.min(contentItem.implicitWidth + leftPadding + rightPadding, 360)
        implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
        x: parent ? (parent.width - width) / 2 : 0
        y: parent ? parent.height + 4 : 0
        closePolicy: T.Popup.NoAutoClose

        contentItem: PlainText {
            text: tip.text
        }
        background: Rectangle {
            radius: Theme.radiusControl
            color: Theme.menu
            border.color: Theme.layer(0.14)
        }
    }
}
