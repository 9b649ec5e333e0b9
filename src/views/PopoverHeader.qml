import QtQuick
import Tarnwick

/// The popover's head: the product mark and four buttons; of a large fleet also how it is.
Band {
    id: root

    required property PopoverModel popover
    required property UIState ui

    readonly property real lineHeight: 48

    implicitHeight: summary.visible ? lineHeight + summary.height + 6 : lineHeight

    SymbolLabel {
        x: 14
        height: root.lineHeight
        text: root.popover.words.product
        textSize: 14
        textWeight: Font.Bold
        symbol: "waveform.path.ecg"
        symbolTint: Theme.blue
        spacing: 6
    }
    Row {
        anchors.right: parent.right
        anchors.rightMargin: 10
        y: (root.lineHeight - height) / 2
        spacing: 4

        DisabledHelp {
            IconButton {
                text: root.popover.words.refresh
                symbol: "arrow.clockwise"
                busy: root.popover.content.isRefreshing
                enabled: !busy
                onClicked: root.popover.refreshAll()
            }
        }
        IconButton {
            text: root.popover.words.add
            symbol: "plus"
            onClicked: root.ui.showingAddServer = true
        }
        IconButton {
            text: root.popover.words.hardware
            symbol: "macmini"
            onClicked: root.ui.showingMacInfoSheet = true
        }
        IconButton {
            text: root.popover.words.settings
            symbol: "gearshape"
            onClicked: root.ui.showingSettings = true
        }
    }
    FleetSummary {
        id: summary

        x: 12
        y: root.lineHeight - 4
        visible: root.popover.content.countCount > 0
        popover: root.popover
    }
}
