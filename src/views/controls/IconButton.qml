import QtQuick
import Tarnwick

/// A symbol to press. Its `text` is the help text and the accessible name. While `busy`, a spinner takes the symbol's
/// place.
Pressable {
    id: root

    property string symbol
    property color tint: Theme.primary
    /// The symbol's colour under the pointer and with the keyboard.
    property color activeTint: tint
    property bool busy: false
    /// Whether it is drawn paler while it is disabled.
    property bool pales: true

    implicitWidth: 24
    implicitHeight: 24
    hoverLayer: 0.08
    pressLayer: 0.14
    help: text

    contentItem: Item {
        Symbol {
            anchors.centerIn: parent
            visible: !root.busy
            opacity: root.enabled || !root.pales ? 1 : 0.4
            name: root.symbol
            color: root.enabled && (root.hovered || root.visualFocus) ? root.activeTint : root.tint
        }
        Spinner {
            anchors.centerIn: parent
            visible: root.busy
        }
    }
}
