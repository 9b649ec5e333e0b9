import QtQuick
import Tarnwick

/// What the popover shows instead of the cards while there are no servers.
Column {
    id: root

    required property popoverWords words
    signal addRequested

    padding: 30
    spacing: 8

    Symbol {
        anchors.horizontalCenter: parent.horizontalCenter
        name: "server.rack"
        side: 32
        color: Theme.secondary
    }
    PlainText {
        anchors.horizontalCenter: parent.horizontalCenter
        text: root.words.noServers
        size: 13
        font.weight: Font.DemiBold
    }
    PlainText {
        width: root.width - 2 * root.padding
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        maximumLineCount: 3
        text: root.words.howToAdd
        size: 10
        color: Theme.secondary
    }
    Item {
        width: 1
        height: 4 - root.spacing
    }
    PrimaryButton {
        anchors.horizontalCenter: parent.horizontalCenter
        isLarge: true
        text: root.words.addFirst
        onClicked: root.addRequested()
    }
}
