import QtQuick
import Tarnwick

/// The popover's head: the product mark and four buttons.
Item {
    id: root

    required property PopoverModel popover
    required property UIState ui
    property real topRadius: 0

    implicitHeight: 48
    clip: true

    Rectangle {
        width: parent.width
        height: parent.height + radius
        radius: root.topRadius
        color: Theme.layer(0.03)
    }
    SymbolLabel {
        x: 14
        anchors.verticalCenter: parent.verticalCenter
        text: "Tarnwick"
        textSize: 14
        textWeight: Font.Bold
        symbol: "waveform.path.ecg"
        symbolTint: Theme.blue
        spacing: 6
    }
    Row {
        anchors.right: parent.right
        anchors.rightMargin: 14
        anchors.verticalCenter: parent.verticalCenter
        spacing: 4

        IconButton {
            text: "Refresh All Servers"
            symbol: "arrow.clockwise"
            busy: root.popover.content.isRefreshing
            enabled: !busy
            onClicked: root.popover.refreshAll()
        }
        IconButton {
            text: "Add New Server"
            symbol: "plus"
            onClicked: root.ui.showingAddServer = true
        }
        IconButton {
            text: "Hardware Specs & Thermals"
            symbol: "macmini"
            symbolSize: 15
            onClicked: root.ui.showingMacInfoSheet = true
        }
        IconButton {
            text: "Settings"
            symbol: "gearshape"
            onClicked: root.ui.showingSettings = true
        }
    }
}
