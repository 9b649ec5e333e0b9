import QtQuick
import Tarnwick

/// A slider under a line that names it and says its value.
Column {
    id: root

    required property sliderRange range
    property alias label: label.text
    property alias valueText: valueText.text
    property real value: 0
    signal moved(real value)

    spacing: 4

    Item {
        width: parent.width
        height: 16

        PlainText {
            id: label

            anchors.verticalCenter: parent.verticalCenter
            size: 12
            Accessible.ignored: true
        }
        FigureText {
            id: valueText

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            size: 12
            color: Theme.secondary
        }
    }
    ValueSlider {
        width: parent.width
        range: root.range
        value: root.value
        Accessible.name: root.label
        Accessible.description: root.valueText
        onMoved: root.moved(value)
    }
}
