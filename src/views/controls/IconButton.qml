import QtQuick
import QtQuick.Templates as T
import Tarnwick

/// A symbol to press. Its `text` is the help text and the accessible name. While `busy`, a spinner takes the symbol's
/// place.
T.AbstractButton {
    id: root

    property string symbol
    property color tint: Theme.primary
    property real symbolSize: 14
    property bool busy: false
    /// Whether it is drawn paler while it is disabled.
    property bool pales: true

    implicitWidth: 24
    implicitHeight: 24
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

    background: Rectangle {
        radius: Theme.radiusControl
        color: root.down ? Theme.layer(0.14) : root.hovered && root.enabled ? Theme.layer(0.08) : "transparent"
        border.width: root.visualFocus ? 2 : 0
        border.color: Theme.blue
    }
    contentItem: Item {
        Symbol {
            anchors.centerIn: parent
            visible: !root.busy
            opacity: root.enabled || !root.pales ? 1 : 0.4
            name: root.symbol
            color: root.tint
            side: root.symbolSize
        }
        Spinner {
            anchors.centerIn: parent
            visible: root.busy
        }
    }

    HelpTip {
        text: root.text
        wanted: root.hovered || root.visualFocus
    }
}
