import QtQuick
import Tarnwick

/// Shows the help text of the button in it also while that is disabled: then it gets no hover events of its own.
Item {
    id: root

    default property alias content: holder.data
    readonly property Pressable button: holder.children[0] as Pressable

    implicitWidth: holder.childrenRect.width
    implicitHeight: holder.childrenRect.height

    Item {
        id: holder
    }
    HoverHandler {
        id: pointer
    }
    HelpTip {
        wanted: pointer.hovered && !root.button.enabled
        text: wanted ? root.button.help : ""
    }
}
