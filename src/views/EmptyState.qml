import QtQuick
import Tarnwick

/// What stands in the list's place while there are no servers.
Column {
    id: root

    signal addRequested

    padding: 30
    spacing: 8

    Symbol {
        anchors.horizontalCenter: parent.horizontalCenter
        name: "server.rack"
        side: 28
        color: Theme.secondary
    }
    PlainText {
        anchors.horizontalCenter: parent.horizontalCenter
        text: "No Servers Configured"
        size: 13
        font.weight: Font.DemiBold
    }
    PlainText {
        width: root.width - 2 * root.padding
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        maximumLineCount: 3
        text: "Click the + button to add a remote server or import your ~/.ssh/config."
        size: 10
        color: Theme.secondary
    }
    Item {
        width: 1
        height: 4 - root.spacing
    }
    PrimaryButton {
        anchors.horizontalCenter: parent.horizontalCenter
        text: "Add First Server"
        onClicked: root.addRequested()
    }
}
