import QtQuick
import Tarnwick

/// One host of the import list.
Item {
    id: root

    required property int index
    required property detectedHost content
    required property addServerWords words
    property bool isCurrent: false
    property bool isLast: false
    signal importRequested(int index)
    signal aliasRequested(int index)

    implicitHeight: Math.max(52, texts.height + 20)
    Accessible.role: Accessible.ListItem
    Accessible.name: content.alias
    Accessible.description: content.description
    onIsCurrentChanged: if (!isCurrent)
        addAlias.focus = false // the arrow keys go on from the list

    Rectangle {
        anchors.fill: parent
        visible: root.isCurrent
        radius: Theme.radiusRow
        color: Theme.layer(0.05)
        border.width: 2
        border.color: Theme.blue
    }
    Column {
        id: texts

        x: 10
        anchors.verticalCenter: parent.verticalCenter
        width: action.x - x - 10
        spacing: 2

        PlainText {
            width: parent.width
            text: root.content.alias
            size: 12
            font.weight: Font.DemiBold
        }
        PlainText {
            width: parent.width
            text: root.content.address
            size: 10
            color: Theme.secondary
        }
        PlainText {
            width: parent.width
            visible: text !== ""
            text: root.content.keyText
            size: 9
            color: Theme.faint
        }
        PlainText {
            width: parent.width
            visible: text !== ""
            topPadding: 2
            wrapMode: Text.Wrap
            maximumLineCount: 2
            text: root.content.hint
            size: 10
            color: Theme.secondary
        }
        // In the Tab order only in the row that the keyboard is at.
        TextLink {
            id: addAlias

            objectName: "addAlias"
            width: Math.min(implicitWidth, parent.width)
            visible: text !== ""
            text: root.content.addAlias
            focusPolicy: Qt.TabFocus
            activeFocusOnTab: root.isCurrent
            Accessible.role: Accessible.Button
            Accessible.description: root.content.hint
            onClicked: root.aliasRequested(root.index)
        }
    }
    Item {
        id: action

        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        width: 64
        height: 24

        Capsule {
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            visible: root.content.isAdded
            text: root.words.added
            textWeight: Font.Medium
            padding: 8
            implicitHeight: 18
            radius: 9
        }
        // Not in the Tab order: the list has the keyboard focus, and Tab would go through all of its many rows.
        PrimaryButton {
            objectName: "import"
            anchors.right: parent.right
            visible: !root.content.isAdded
            text: root.words.importHost
            focusPolicy: Qt.NoFocus
            activeFocusOnTab: false
            Accessible.description: root.content.alias
            onClicked: root.importRequested(root.index)
        }
    }

    Divider {
        anchors.bottom: parent.bottom
        visible: !root.isLast
        x: 10
        width: parent.width - 20
        color: Theme.layer(0.06)
    }
}
