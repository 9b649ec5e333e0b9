pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick

/// The live metrics of this computer, which can each be pinned, and the preset buttons.
Column {
    id: root

    required property MacInfoModel mac
    readonly property macInfoContent content: mac.content

    spacing: 10

    PlainText {
        width: parent.width
        text: root.content.guide
        size: 10
        color: Theme.secondary
    }
    SectionHeading {
        id: loads

        width: parent.width
        symbol: root.content.loads.symbol
        tint: Theme.color(root.content.loads.role)
        text: root.content.loads.heading

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
        group: root.content.loads
        pins: root.mac.pins
    }
    FleetPinButton {
        objectName: text
        width: parent.width
        fleet: root.content.fleet
        onClicked: root.mac.pins.toggle(fleet.item)
    }
    SectionHeading {
        id: thermals

        width: parent.width
        symbol: root.content.thermals.symbol
        tint: Theme.color(root.content.thermals.role)
        text: root.content.thermals.heading

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
        group: root.content.thermals
        pins: root.mac.pins
    }
    Grid {
        columns: 2
        columnSpacing: 6
        rowSpacing: 6

        Repeater {
            model: root.mac.presets
            delegate: PushButton {
                required property pinPresetButton modelData

                objectName: text
                width: (root.width - 6) / 2
                symbol: modelData.symbol
                text: modelData.caption
                onClicked: root.mac.pins.choose(modelData.preset)
            }
        }
    }
}
