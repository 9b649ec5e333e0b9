import QtQuick
import Tarnwick

/// A small turning progress indicator. While it is invisible it does not turn, and costs
/// nothing.
ProgressArc {
    id: root

    implicitWidth: 14
    implicitHeight: 14
    color: Theme.secondary
    Accessible.role: Accessible.Animation
    Accessible.name: "In progress"

    NumberAnimation on angle {
        from: 0
        to: 360
        duration: 900
        loops: Animation.Infinite
        running: root.visible
    }
}
