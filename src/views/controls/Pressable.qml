import QtQuick
import QtQuick.Templates as T
import Tarnwick

/// What everything to press has in common: Return and Enter press it as Space does, it has a layer under the pointer, a
/// deeper one while it is pressed, a ring while it has the keyboard, and a help text when it has one.
T.AbstractButton {
    id: root

    property string help
    property real radius: Theme.radiusControl
    property color fill: "transparent"
    property color edge: "transparent"
    /// The opacities of the layers over the fill.
    property real hoverLayer: 0.03
    property real pressLayer: 0.08

    function press() {
        if (checkable) {
            toggle();
            toggled();
        }
        clicked();
    }

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    Keys.onReturnPressed: press()
    Keys.onEnterPressed: press()

    background: Rectangle {
        radius: root.radius
        color: root.fill
        border.width: root.visualFocus ? 2 : root.edge.a > 0 ? 1 : 0
        border.color: root.visualFocus ? Theme.blue : root.edge

        Rectangle {
            anchors.fill: parent
            radius: root.radius
            color: Theme.layer(root.down ? root.pressLayer : root.hovered && root.enabled ? root.hoverLayer : 0)
        }
    }

    HelpTip {
        text: root.help
        wanted: root.hovered || root.visualFocus
    }
}
