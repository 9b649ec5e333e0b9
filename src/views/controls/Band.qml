import QtQuick
import Tarnwick

/// The head or the foot of a window, on a faint background that has the window's round corners.
Item {
    id: root

    property real radius: 0
    property bool isFoot: false
    property alias color: background.color

    clip: true

    Rectangle {
        id: background

        // The corners towards the middle of the window are cut off.
        y: root.isFoot ? -radius : 0
        width: root.width
        height: root.height + radius
        radius: root.radius
        color: Theme.layer(0.03)
    }
}
