pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick

/// What a card says below its head: a notice, the probe's error, or the metrics and what belongs to them.
Column {
    id: root

    required property serverCardContent content
    required property CardActions actions
    /// The part of this item that the list of cards shows.
    required property real shownTop
    required property real shownHeight
    /// Space below the body; none below rows to press, which reach down to the card's edge.
    readonly property real bottomRoom: below.visible ? 0 : 12
    /// While the list of containers opens or closes, this changes its height by itself.
    readonly property bool isFolding: (containers.count > 0 ? containers.itemAt(0) as CardContainers : null)?.isFolding
                                      ?? false

    Row {
        visible: root.content.notice !== ""
        spacing: 8

        Spinner {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.content.isChecking
        }
        PlainText {
            text: root.content.notice
            color: Theme.secondary
        }
    }
    Rectangle {
        visible: root.content.hasFailed
        width: parent.width
        height: errorTexts.height + 14
        radius: Theme.radiusControl
        color: Theme.translucent(Theme.red, 0.1)

        Symbol {
            id: warning

            x: 8
            y: 6
            name: "exclamationmark.triangle.fill"
            color: Theme.textColor(ColorRole.Red)
        }
        Column {
            id: errorTexts

            anchors.left: warning.right
            anchors.leftMargin: 6
            anchors.right: parent.right
            anchors.rightMargin: 9
            anchors.verticalCenter: parent.verticalCenter
            spacing: 4

            PlainText {
                width: parent.width
                height: Math.max(implicitHeight, 14)
                maximumLineCount: 2
                wrapMode: Text.Wrap
                text: root.content.errorText
                color: Theme.textColor(ColorRole.Red)
            }
            PlainText {
                visible: text !== ""
                width: parent.width
                maximumLineCount: 3
                wrapMode: Text.Wrap
                text: root.content.errorAdvice
                color: Theme.secondary
            }
        }
    }
    Column {
        id: bars

        /// The one under the pointer.
        readonly property MetricBarView pointed: pointer.hovered
                ? childAt(pointer.point.position.x, pointer.point.position.y) as MetricBarView : null

        width: parent.width
        spacing: 8
        bottomPadding: root.content.barCount > 0 && below.visible ? 10 : 0

        HoverHandler {
            id: pointer
        }
        Repeater {
            model: root.content.barCount
            delegate: MetricBarView {
                required property int index

                width: root.width
                content: root.content.bar(index)
                isPointed: bars.pointed === this
            }
        }
    }
    Column {
        id: below

        visible: root.content.containersText !== "" || root.content.hasHardwareRow
        width: parent.width

        Repeater {
            id: containers

            model: root.content.containersText !== "" ? 1 : 0
            delegate: CardContainers {
                width: root.width
                content: root.content
                actions: root.actions
                shownTop: root.shownTop - below.y - y
                shownHeight: root.shownHeight
            }
        }
        Repeater {
            model: root.content.hasHardwareRow ? 1 : 0
            delegate: Column {
                width: root.width

                Divider {
                    x: -12
                    width: root.width + 24
                }
                CardRow {
                    x: -6
                    width: root.width + 12
                    text: root.actions.words.hardwareRow
                    symbol: "macmini"
                    endSymbol: "chevron.right"
                    onClicked: root.actions.showHardware()
                }
            }
        }
    }
}
