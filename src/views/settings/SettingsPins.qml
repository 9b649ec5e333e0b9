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
            side: 15
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
        Row {
            id: presets

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            spacing: 6

            PushButton {
                objectName: "all"
                implicitHeight: 22
                horizontalPadding: 8
                text: "All"
                onClicked: root.settings.pins.choose(PinListModel.Preset.All)
            }
            PushButton {
                objectName: "resources"
                implicitHeight: 22
                horizontalPadding: 8
                text: "Resources"
                onClicked: root.settings.pins.choose(PinListModel.Preset.Resources)
            }
            PushButton {
                objectName: "reset"
                implicitHeight: 22
                horizontalPadding: 8
                text: "Reset"
                onClicked: root.settings.pins.choose(PinListModel.Preset.Standard)
            }
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

        CheckRow {
            required property int item
            required property string title
            required property string example
            required property bool pinned

            objectName: "pin" + item
            width: parent.width
            text: title
            detail: example
            detailTint: pinned ? Theme.textColor(ColorRole.Blue) : Theme.secondary
            Accessible.description: example
            checked: pinned
            onToggled: root.settings.pins.toggle(item)
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
