import QtQuick
import QtQuick.Templates as T
import Tarnwick

/// A slider between stops; the arrow keys go from one to the next.
T.Slider {
    id: root

    required property sliderRange range

    implicitWidth: 200
    implicitHeight: 20
    from: range.from
    to: range.to
    stepSize: range.step
    snapMode: T.Slider.SnapAlways

    background: Rectangle {
        x: 0
        y: (root.height - height) / 2
        width: root.width
        height: 4
        radius: 2
        color: Theme.layer(0.14)

        Rectangle {
            width: root.handle.x + root.handle.width / 2
            height: parent.height
            radius: parent.radius
            color: Theme.blue
        }
    }
    handle: Rectangle {
        x: root.visualPosition * (root.width - width)
        y: (root.height - height) / 2
        width: 18
        height: 18
        radius: 9
        color: root.pressed ? Theme.knobPressed : Theme.knob
        border.width: root.visualFocus ? 2 : 1
        border.color: root.visualFocus ? Theme.blue : Theme.layer(0.18)
    }
}
