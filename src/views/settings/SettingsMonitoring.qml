import QtQuick
import Tarnwick

/// How often the fleet is asked, and what raises an alert.
Block {
    id: root

    required property SettingsModel settings

    PlainText {
        text: "Monitoring Preferences"
        size: 12
        font.weight: Font.DemiBold
    }
    LabeledSlider {
        objectName: "interval"
        width: parent.width
        label: "Refresh Interval:"
        valueText: root.settings.content.refreshIntervalText
        range: root.settings.refreshIntervalRange
        value: root.settings.content.refreshInterval
        onMoved: value => root.settings.setRefreshInterval(value)
    }
    LabeledSlider {
        objectName: "disk"
        width: parent.width
        label: "Disk Full Alert Threshold:"
        valueText: root.settings.content.diskThresholdText
        range: root.settings.diskThresholdRange
        value: root.settings.content.diskThreshold
        onMoved: value => root.settings.setDiskThreshold(value)
    }
    CheckRow {
        objectName: "sound"
        width: parent.width
        text: "Sound effects on critical alert"
        checked: root.settings.content.soundAlerts
        onToggled: root.settings.setSoundAlerts(checked)
    }
}
