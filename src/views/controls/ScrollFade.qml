pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick

/// Fades what scrolls at the ends where it goes on. It lies over the area and leaves its scroll bar free.
Item {
    id: root

    required property Flickable area
    /// What is behind the area.
    property color ground: Theme.window
    readonly property real extent: 20
    readonly property real above: area.contentY - area.originY + area.topMargin
    readonly property real below: area.originY + area.contentHeight + area.bottomMargin - area.height - area.contentY

    component End: Rectangle {
        width: root.width
        height: root.extent
        visible: opacity > 0
    }

    End {
        opacity: Math.min(1, root.above / root.extent)
        gradient: Gradient {
            GradientStop { position: 0; color: root.ground }
            GradientStop { position: 1; color: Theme.translucent(root.ground, 0) }
        }
    }
    End {
        y: root.height - height
        opacity: Math.min(1, root.below / root.extent)
        gradient: Gradient {
            GradientStop { position: 0; color: Theme.translucent(root.ground, 0) }
            GradientStop { position: 1; color: root.ground }
        }
    }
}
