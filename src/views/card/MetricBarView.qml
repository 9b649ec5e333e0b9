import QtQuick
import Tarnwick

/// A labelled percentage bar.
Item {
    id: root

    required property metricBarContent content
    /// Whether it shows its trend.
    property bool isPointed: false
    property real shownFraction: content.fraction

    implicitHeight: 22
    Accessible.role: Accessible.ProgressBar
    Accessible.name: content.label
    Accessible.description: content.trend.text === "" ? content.detail : `${content.detail}, ${content.trend.text}`

    Behavior on shownFraction {
        NumberAnimation {
            duration: Theme.barDuration
            easing.type: Easing.InOutQuad
        }
    }

    HelpTip {
        trend: root.content.trend
        wanted: root.isPointed
    }
    PlainText {
        id: label

        height: 14
        text: root.content.label
        size: 10
        font.weight: Font.Medium
        color: Theme.secondary
    }
    FigureText {
        anchors.right: parent.right
        width: Math.min(implicitWidth, parent.width - label.width - 8)
        height: 14
        text: root.content.detail
        size: 10
    }
    Rectangle {
        id: track

        anchors.bottom: parent.bottom
        width: parent.width
        height: 5
        radius: 2.5
        color: Theme.layer(0.1)

        Rectangle {
            visible: width > 0
            width: track.width * root.shownFraction
            height: track.height
            radius: track.radius
            color: Theme.color(root.content.fillRole)
        }
    }
}
