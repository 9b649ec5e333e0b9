import QtQuick
import Tarnwick

/// A field of a form: its label, with a mark when it must be filled in, and a caption when it has one.
FocusScope {
    id: root

    property alias label: label.text
    property alias text: field.text
    property alias prompt: field.prompt
    property alias caption: caption.text
    property bool isRequired: false
    signal edited(string text)
    signal accepted

    implicitHeight: column.implicitHeight

    Column {
        id: column

        width: root.width
        spacing: 2

        Row {
            spacing: 2

            PlainText {
                id: label

                font.weight: Font.DemiBold
                Accessible.ignored: true
            }
            PlainText {
                visible: root.isRequired
                text: "*"
                font.weight: Font.DemiBold
                color: Theme.textColor(ColorRole.Red)
                Accessible.ignored: true
            }
        }
        InputField {
            id: field

            width: root.width
            focus: true
            Accessible.name: root.label
            onTextEdited: root.edited(text)
            onAccepted: root.accepted()
        }
        PlainText {
            id: caption

            width: root.width
            visible: text !== ""
            size: 10
            color: Theme.secondary
        }
    }
}
