import QtQuick
import Tarnwick

/// Asks in a container's row whether to stop it. It has the keyboard while it is seen.
FocusScope {
    id: root

    required property containerRowContent content
    required property cardWords words
    signal confirmed
    signal cancelled

    visible: content.question !== ""
    focus: visible
    onVisibleChanged: {
        if (visible)
            cancel.forceActiveFocus(Qt.TabFocusReason);
    }
    Component.onCompleted: {
        if (visible)
            cancel.forceActiveFocus(Qt.TabFocusReason);
    }
    Keys.onEscapePressed: cancelled()

    PlainText {
        anchors.left: parent.left
        anchors.right: stop.left
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        text: root.content.question
        font.weight: Font.DemiBold
    }
    PushButton {
        id: stop

        anchors.right: cancel.left
        anchors.rightMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        text: root.words.stop
        tint: Theme.textColor(ColorRole.Red)
        enabled: root.content.restartEnabled
        onClicked: root.confirmed()
    }
    PushButton {
        id: cancel

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        text: root.words.cancel
        onClicked: root.cancelled()
    }
}
