import QtQuick
import QtQuick.Templates as T
import Tarnwick

/// A help text in a bubble below this item, or above it where there is no room; a chart over it where there is one.
Item {
    id: root

    required property HelpTip tip

    T.ToolTip {
        parent: root
        visible: true
        delay: 600
        margins: 6
        horizontalPadding: 8
        verticalPadding: chart.visible ? 8 : 4
        implicitWidth: Math.min(implicitContentWidth + leftPadding + rightPadding, 340)
        implicitHeight: implicitContentHeight + topPadding + bottomPadding
        x: (root.width - width) / 2
        y: root.height + 4
        closePolicy: T.Popup.NoAutoClose

        contentItem: Column {
            spacing: 6

            // Its ground shows the scale, and that there is nothing where the chart has a gap.
            Rectangle {
                id: chart

                visible: root.tip.trend.text !== "" && root.tip.trend.text === root.tip.text
                width: 200
                height: root.tip.trend.isStepped ? 20 : 40
                color: Theme.layer(0.05)

                Sparkline {
                    anchors.fill: parent
                    trend: root.tip.trend
                    color: Theme.blue
                    barColors: [Theme.green, Theme.orange, Theme.red, Theme.red]
                }
            }
            PlainText {
                width: Math.min(implicitWidth, 324)
                text: root.tip.text
                maximumLineCount: 6
            }
        }
        background: Rectangle {
            radius: Theme.radiusControl
            color: Theme.menu
            border.color: Theme.layer(0.14)
        }
    }
}
