import QtQuick
import Tarnwick

/// The add-server form. Its fields are the UI state's, so they outlive the sheet.
FocusScope {
    id: root

    required property AddServerModel server
    readonly property UIState ui: server.ui
    /// Asks for the sheet to be closed.
    signal dismissed

    function save() {
        if (!server.canSave)
            return;
        server.saveManual();
        dismissed();
    }

    ScrollArea {
        id: fields

        width: parent.width + 10
        anchors.top: parent.top
        anchors.bottom: buttons.top
        anchors.bottomMargin: 12
        spacing: 6

        LabeledField {
            objectName: "name"
            width: root.width
            focus: true
            label: root.server.words.name
            isRequired: true
            prompt: root.server.words.namePrompt
            caption: root.server.words.nameCaption
            text: root.ui.newServerName
            onEdited: text => root.ui.newServerName = text
            onAccepted: root.save()
        }
        LabeledField {
            objectName: "host"
            width: root.width
            label: root.server.words.host
            isRequired: true
            prompt: root.server.words.hostPrompt
            text: root.ui.newServerHost
            onEdited: text => root.ui.newServerHost = text
            onAccepted: root.save()
        }
        Row {
            id: login

            width: root.width
            spacing: 12

            LabeledField {
                id: port

                objectName: "port"
                width: 70
                label: root.server.words.port
                prompt: root.server.words.portPrompt
                text: root.ui.newServerPort
                onEdited: text => root.ui.newServerPort = text
                onAccepted: root.save()
            }
            LabeledField {
                objectName: "user"
                width: login.width - port.width - login.spacing
                label: root.server.words.user
                prompt: root.server.words.userPrompt
                caption: root.server.words.userCaption
                text: root.ui.newServerUser
                onEdited: text => root.ui.newServerUser = text
                onAccepted: root.save()
            }
        }
        LabeledField {
            objectName: "key"
            width: root.width
            label: root.server.words.key
            prompt: root.server.words.keyPrompt
            caption: root.server.words.keyCaption
            text: root.ui.newServerKey
            onEdited: text => root.ui.newServerKey = text
            onAccepted: root.save()
        }
        Rectangle {
            width: root.width
            height: docker.height + 20
            radius: Theme.radiusRow
            color: Theme.layer(0.03)

            Column {
                id: docker

                x: 10
                y: 10
                width: parent.width - 20
                spacing: 2

                CheckRow {
                    objectName: "docker"
                    width: parent.width
                    implicitHeight: 16
                    symbol: "shippingbox.fill"
                    symbolTint: Theme.blue
                    text: root.server.words.docker
                    textWeight: Font.DemiBold
                    Accessible.description: description.text
                    checked: root.ui.newServerDocker
                    onToggled: root.ui.newServerDocker = checked
                }
                PlainText {
                    id: description

                    x: 24
                    width: parent.width - x
                    wrapMode: Text.Wrap
                    maximumLineCount: 2
                    text: root.server.words.dockerGuide
                    size: 10
                    color: Theme.secondary
                }
            }
        }
    }
    Item {
        id: buttons

        anchors.bottom: parent.bottom
        width: parent.width
        height: 24

        PushButton {
            objectName: "cancel"
            anchors.right: save.left
            anchors.rightMargin: 8
            text: root.server.words.cancel
            onClicked: {
                root.server.resetForm();
                root.dismissed();
            }
        }
        PrimaryButton {
            id: save

            objectName: "save"
            anchors.right: parent.right
            text: root.server.words.save
            enabled: root.server.canSave
            onClicked: root.save()
        }
    }
}
