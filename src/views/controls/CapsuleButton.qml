import QtQuick
import QtQuick.Templates as T
import Tarnwick

/// A capsule to press. Its accessible name is `text`.
T.AbstractButton {
    id: root

    property string symbol
    property string help
    property color tint: Theme.secondary
    property color fill: Theme.layer(0.04)
    property int textWeight: Font.Normal

    implicitWidth: contentItem.implicitWidth
    implicitHeight: contentItem.implicitHeight
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

    contentItem: Capsule {
        symbol: root.symbol
        text: root.text
        tint: root.tint
        textWeight: root.textWeight
        color: root.fill

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: root.down ? Theme.layer(0.12) : root.hovered ? Theme.layer(0.06) : "transparent"
            border.width: root.visualFocus ? 2 : 0
            border.color: Theme.blue
        }
    }

    HelpTip {
        text: root.help
        wanted: root.hovered || root.visualFocus
    }
}
