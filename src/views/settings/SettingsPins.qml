pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick

/// What the status item shows.
Block {
    id: root

    required property SettingsModel settings

    spacing: 0

    Item {
        width: parent.width
        height: 24

        Symbol {
            id: mark

            anchors.verticalCenter: parent.verticalCenter
            name: "menubar.rectangle"
            color: Theme.primary
        }
        PlainText {
            anchors.left: mark.right
            anchors.leftMargin: 6
            anchors.right: presets.left
            anchors.rightMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            text: root.settings.words.pins
            size: 12
            font.weight: Font.DemiBold
        }
        PinPresetButtons {
            id: presets

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            presets: root.settings.presets
            pins: root.settings.pins
        }
    }
    PlainText {
        width: parent.width
        height: 24
        text: root.settings.words.pinsGuide
        size: 10
        color: Theme.secondary
    }
    Repeater {
        model: root.settings.pins
        delegate: PinCheckRow {
            width: root.width - 2 * root.padding
            pins: root.settings.pins
        }
    }
    Item {
        width: parent.width
        height: 13

        Divider {
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width
        }
    }
    CheckRow {
        objectName: "label"
        width: parent.width
        text: root.settings.words.label
        checked: root.settings.content.showMenuBarLabel
        onToggled: root.settings.setShowMenuBarLabel(checked)
    }
}
