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
        anchors.bottomMargin: 8
        spacing: 6

        LabeledField {
            objectName: "name"
            width: root.width
            focus: true
            label: "Server Name"
            isRequired: true
            prompt: "e.g. Production VPS, Hetzner Web, Home Server"
            caption: root.server.nameCaption
            text: root.ui.newServerName
            onEdited: text => root.ui.newServerName = text
            onAccepted: root.save()
        }
        LabeledField {
            objectName: "host"
            width: root.width
            label: "Hostname or IP Address"
            isRequired: true
            prompt: "e.g. 192.0.2.10 or server.example.com"
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
                label: "SSH Port"
                prompt: "22"
                text: root.ui.newServerPort
                onEdited: text => root.ui.newServerPort = text
                onAccepted: root.save()
            }
            LabeledField {
                objectName: "user"
                width: login.width - port.width - login.spacing
                label: "SSH User"
                prompt: "root"
                caption: "Default: root"
                text: root.ui.newServerUser
                onEdited: text => root.ui.newServerUser = text
                onAccepted: root.save()
            }
        }
        LabeledField {
            objectName: "key"
            width: root.width
            label: "SSH Key Path (Optional)"
            prompt: "~/.ssh/id_ed25519 (leave blank for ssh-agent)"
            caption: root.server.keyCaption
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
                    text: "Monitor Docker Containers"
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
                    text: "Discovers running/stopped Docker containers and enables 1-click remote container restarts."
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
        height: 28

        PushButton {
            objectName: "cancel"
            anchors.right: save.left
            anchors.rightMargin: 8
            implicitHeight: 28
            horizontalPadding: 14
            textSize: 12
            text: "Cancel"
            onClicked: {
                root.server.resetForm();
                root.dismissed();
            }
        }
        PrimaryButton {
            id: save

            objectName: "save"
            anchors.right: parent.right
            text: "Save Server"
            enabled: root.server.canSave
            onClicked: root.save()
        }
    }
}
