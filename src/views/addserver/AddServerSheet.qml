import QtQuick
import Tarnwick

/// The sheet that adds servers: by hand, or from the user's ssh configuration.
FocusScope {
    id: root

    required property AddServerModel server
    readonly property UIState ui: server.ui
    /// Asks for the sheet to be closed.
    signal dismissed

    implicitWidth: 480
    implicitHeight: 460
    focus: true
    Keys.onEscapePressed: dismissed()
    Accessible.role: Accessible.Dialog
    Accessible.name: title.text

    Item {
        id: header

        x: 20
        y: 20
        width: root.width - 40
        height: 24

        Symbol {
            id: mark

            anchors.verticalCenter: parent.verticalCenter
            name: "server.rack"
            color: Theme.blue
        }
        PlainText {
            id: title

            anchors.left: mark.right
            anchors.leftMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            text: root.server.words.title
            size: 14
            font.weight: Font.Bold
        }
        PushButton {
            objectName: "close"
            anchors.right: parent.right
            text: root.server.words.close
            onClicked: root.dismissed()
        }
    }
    SegmentedPicker {
        id: picker

        objectName: "tabs"
        x: 20
        anchors.top: header.bottom
        anchors.topMargin: 16
        width: header.width
        captions: [root.server.words.manualTab, root.server.importCaption]
        current: root.ui.addServerTab
        onChosen: index => root.ui.addServerTab = index
    }
    Item {
        id: content

        x: 20
        anchors.top: picker.bottom
        anchors.topMargin: 16
        anchors.bottom: root.bottom
        anchors.bottomMargin: 20
        width: header.width

        ManualServerForm {
            id: form

            anchors.fill: parent
            visible: root.ui.addServerTab === 0
            server: root.server
            onDismissed: root.dismissed()
        }
        DetectedHostList {
            id: list

            anchors.fill: parent
            visible: root.ui.addServerTab !== 0
            server: root.server
        }
    }
    Component.onCompleted: (ui.addServerTab === 0 ? form : list).focus = true
}
