import QtQuick
import Tarnwick

/// The sheet about this computer.
FocusScope {
    id: root

    required property MacInfoModel mac
    property real topRadius: 0
    /// Asks for the sheet to be closed.
    signal dismissed

    implicitWidth: 400
    implicitHeight: 560
    focus: true
    Keys.onEscapePressed: dismissed()
    Accessible.role: Accessible.Dialog
    Accessible.name: heading.text

    Band {
        id: header

        width: root.width
        height: 58
        radius: root.topRadius

        Rectangle {
            x: 14
            anchors.verticalCenter: parent.verticalCenter
            width: 34
            height: 34
            radius: Theme.radiusRow
            color: Theme.translucent(Theme.blue, 0.15)

            Symbol {
                anchors.centerIn: parent
                name: "macmini.fill"
                side: 24
                color: Theme.blue
            }
        }
        PlainText {
            id: heading

            x: 58
            y: 12
            width: refresh.x - x - 8
            text: root.mac.content.heading
            size: 13
            font.weight: Font.Bold
        }
        PlainText {
            x: 58
            y: 30
            width: heading.width
            text: root.mac.content.identity
            size: 10
            color: Theme.secondary
        }
        IconButton {
            id: refresh

            objectName: "refresh"
            anchors.right: done.left
            anchors.rightMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            text: root.mac.content.refresh
            symbol: "arrow.clockwise"
            onClicked: root.mac.refresh()
        }
        PushButton {
            id: done

            objectName: "done"
            anchors.right: parent.right
            anchors.rightMargin: 14
            anchors.verticalCenter: parent.verticalCenter
            text: root.mac.content.done
            onClicked: root.dismissed()
        }
    }
    Divider {
        y: header.height
        width: root.width
    }
    ScrollArea {
        id: scroll

        objectName: "scroll"
        x: 14
        y: header.height + 1
        width: root.width - 2 * x + 10
        height: root.height - y - 1

        Column {
            width: scroll.width - 10
            topPadding: 12
            bottomPadding: 14
            spacing: 12

            MacPins {
                width: parent.width
                mac: root.mac
            }
            MacFacts {
                width: parent.width
                content: root.mac.content
            }
            MacSensors {
                width: parent.width
                mac: root.mac
            }
        }
    }
}
