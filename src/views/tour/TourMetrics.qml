pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick

/// Three figures in a row.
Row {
    id: root

    required property onboardingContent content
    /// The first one's place among the content's figures.
    required property int first

    spacing: 8

    Repeater {
        model: 3
        delegate: Rectangle {
            id: box

            required property int index
            readonly property onboardingMetric metric: root.content.metric(root.first + index)

            width: (root.width - 2 * root.spacing) / 3
            height: 66
            radius: Theme.radiusRow
            color: Theme.layer(0.03)
            Accessible.role: Accessible.StaticText
            Accessible.name: box.metric.title
            Accessible.description: box.metric.value

            PlainText {
                x: 10
                y: 7
                width: parent.width - 20
                text: box.metric.title
                size: 10
                color: Theme.secondary
            }
            PlainText {
                x: 10
                y: 21
                width: parent.width - 20
                text: box.metric.value
                size: 19
                font.weight: Font.Bold
                color: Theme.figureColor(box.metric.role)
            }
            PlainText {
                x: 10
                y: 46
                width: parent.width - 20
                text: box.metric.subtitle
                size: 9
                color: Theme.secondary
            }
        }
    }
}
