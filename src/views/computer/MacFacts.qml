pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick

/// The hardware facts of this computer, one per line.
Rectangle {
    id: root

    required property macInfoContent content

    implicitHeight: lines.height + 22
    radius: Theme.radiusCard
    color: Theme.layer(0.04)

    Column {
        id: lines

        x: 12
        y: 11
        width: parent.width - 24

        PlainText {
            height: 22
            text: root.content.factsHeading
            size: 12
            font.weight: Font.DemiBold
        }
        Repeater {
            model: root.content.factCount
            delegate: Item {
                id: line

                required property int index
                readonly property macFact fact: root.content.fact(index)

                width: lines.width
                height: 22

                Symbol {
                    anchors.verticalCenter: parent.verticalCenter
                    name: line.fact.symbol
                    color: Theme.secondary
                }
                PlainText {
                    id: label

                    x: 22
                    anchors.verticalCenter: parent.verticalCenter
                    text: line.fact.label
                    color: Theme.secondary
                }
                PlainText {
                    id: value

                    anchors.left: label.right
                    anchors.leftMargin: 12
                    anchors.right: parent.right
                    anchors.verticalCenter: parent.verticalCenter
                    horizontalAlignment: Text.AlignRight
                    text: line.fact.value
                    font.weight: Font.Medium

                    HoverHandler {
                        id: pointer
                    }
                    HelpTip {
                        text: value.text
                        wanted: value.truncated && pointer.hovered
                    }
                }
            }
        }
    }
}
