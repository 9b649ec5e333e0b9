import QtQuick
import Tarnwick

/// The settings sheet.
FocusScope {
    id: root

    required property SettingsModel settings
    /// Asks for the sheet to be closed.
    signal dismissed

    implicitWidth: 400
    implicitHeight: 560
    focus: true
    Keys.onEscapePressed: dismissed()
    Accessible.role: Accessible.Dialog
    Accessible.name: title.text

    Item {
        id: header

        x: 16
        y: 16
        width: root.width - 32
        height: 24

        PlainText {
            id: title

            anchors.verticalCenter: parent.verticalCenter
            text: root.settings.words.title
            size: 14
            font.weight: Font.Bold
        }
        PushButton {
            objectName: "done"
            anchors.right: parent.right
            text: root.settings.words.done
            onClicked: {
                root.settings.save();
                root.dismissed();
            }
        }
    }
    ScrollArea {
        objectName: "scroll"
        anchors.top: header.bottom
        anchors.topMargin: 12
        anchors.bottom: footer.top
        anchors.bottomMargin: 12
        x: 16
        width: header.width + 10
        spacing: 12

        SettingsPins {
            width: header.width
            settings: root.settings
        }
        SettingsMonitoring {
            width: header.width
            settings: root.settings
        }
        SettingsTourButton {
            objectName: "tour"
            width: header.width
            text: root.settings.words.tour
            onClicked: root.settings.replayTour()
        }
        SettingsSupport {
            width: header.width
            settings: root.settings
        }
    }
    Item {
        id: footer

        x: 16
        anchors.bottom: root.bottom
        anchors.bottomMargin: 16
        width: header.width
        height: 24

        PlainText {
            anchors.verticalCenter: parent.verticalCenter
            text: root.settings.words.version
            size: 9
            color: Theme.secondary
        }
        PushButton {
            objectName: "quit"
            anchors.right: parent.right
            text: root.settings.words.quit
            onClicked: root.settings.quit()
        }
    }
}
