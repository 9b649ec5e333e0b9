import QtQuick
import Tarnwick

/// The popover's head: the product mark and four buttons.
Band {
    id: root

    required property PopoverModel popover
    required property UIState ui

    implicitHeight: 48

    SymbolLabel {
        x: 14
        anchors.verticalCenter: parent.verticalCenter
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
        anchors.verticalCenter: parent.verticalCenter
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
}
