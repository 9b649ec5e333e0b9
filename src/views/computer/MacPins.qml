pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick

/// The live metrics of this computer, each to pin, and the presets.
Column {
    id: root

    required property macInfoContent content
    required property list<pinPresetButton> presets
    required property PinListModel pins

    spacing: 10

    PlainText {
        width: parent.width
        text: "Click any metric to pin/unpin it on your menu bar:"
        size: 10
        color: Theme.secondary
    }
    SectionHeading {
        id: loads

        width: parent.width
        symbol: "cpu"
        tint: Theme.blue
        text: "Live System Utilization"

        PlainText {
            x: loads.end
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - x
            horizontalAlignment: Text.AlignRight
            text: root.content.chip
            size: 10
            color: Theme.secondary
        }
    }
    MetricTiles {
        width: parent.width
        content: root.content
        first: 0
        onPressed: pinRow => root.pins.toggle(pinRow)
    }
    FleetPinButton {
        objectName: text
        width: parent.width
        fleet: root.content.fleet
        onClicked: root.pins.toggle(fleet.pinRow)
    }
    SectionHeading {
        id: thermals

        width: parent.width
        symbol: "thermometer.medium"
        tint: Theme.orange
        text: "Live Thermals & Sensors"

        PlainText {
            id: state

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, thermals.width - thermals.end - 12)
            text: root.content.thermalState
            size: 10
            font.weight: Font.Medium
            color: Theme.textColor(root.content.thermalRole)
        }
        Rectangle {
            anchors.right: state.left
            anchors.rightMargin: 5
            anchors.verticalCenter: parent.verticalCenter
            width: 6
            height: 6
            radius: 3
            color: Theme.color(root.content.thermalRole)
        }
    }
    MetricTiles {
        width: parent.width
        content: root.content
        first: 3
        onPressed: pinRow => root.pins.toggle(pinRow)
    }
    Grid {
        columns: 2
        columnSpacing: 6
        rowSpacing: 6

        Repeater {
            model: root.presets
            delegate: PushButton {
                required property pinPresetButton modelData

                objectName: text
                width: (root.width - 6) / 2
                symbol: modelData.symbol
                text: modelData.caption
                onClicked: root.pins.choose(modelData.preset)
            }
        }
    }
}
