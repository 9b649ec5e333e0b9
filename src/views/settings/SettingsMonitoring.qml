import QtQuick
import Tarnwick

/// How often the fleet is asked, what raises an alert, and whether the program starts with the session.
Block {
    id: root

    required property SettingsModel settings

    PlainText {
        text: root.settings.words.monitoring
        size: 12
        font.weight: Font.DemiBold
    }
    LabeledSlider {
        objectName: "interval"
        width: parent.width
        label: root.settings.words.refreshInterval
        valueText: root.settings.content.refreshIntervalText
        range: root.settings.refreshIntervalRange
        value: root.settings.content.refreshInterval
        onMoved: value => root.settings.setRefreshInterval(value)
    }
    LabeledSlider {
        objectName: "disk"
        width: parent.width
        label: root.settings.words.diskThreshold
        valueText: root.settings.content.diskThresholdText
        range: root.settings.diskThresholdRange
        value: root.settings.content.diskThreshold
        onMoved: value => root.settings.setDiskThreshold(value)
    }
    CheckRow {
        objectName: "sound"
        width: parent.width
        text: root.settings.words.sound
        checked: root.settings.content.soundAlerts
        onToggled: root.settings.setSoundAlerts(checked)
    }
    CheckRow {
        objectName: "share"
        width: parent.width
        text: root.settings.words.share
        detail: root.settings.words.shareGuide
        Accessible.description: detail
        checked: root.settings.content.sharesConnections
        onToggled: root.settings.setSharesConnections(checked)
    }
    CheckRow {
        objectName: "login"
        width: parent.width
        text: root.settings.words.startAtLogin
        checked: root.settings.content.startsAtLogin
        onToggled: root.settings.setStartsAtLogin(checked)
    }
}
