import QtQuick
import QtQuick.Templates as T
import Tarnwick

/// One line of plain text to fill in, with a prompt while it is empty.
T.TextField {
    id: root

    property string prompt

    implicitHeight: 24
    leftPadding: 8
    rightPadding: 8
    verticalAlignment: TextInput.AlignVCenter
    clip: true
    color: Theme.primary
    selectionColor: Theme.prominent
    selectedTextColor: Theme.prominentText
    font.family: Theme.family
    font.pixelSize: 12
    Accessible.description: prompt
    onActiveFocusChanged: {
        if (activeFocus && (focusReason === Qt.TabFocusReason || focusReason === Qt.BacktabFocusReason))
            selectAll();
    }

    background: Rectangle {
        radius: Theme.radiusControl
        color: Theme.field
        border.width: root.activeFocus ? 2 : 1
        border.color: root.activeFocus ? Theme.blue : Theme.fieldEdge
    }

    PlainText {
        anchors.fill: parent
        anchors.leftMargin: root.leftPadding
        anchors.rightMargin: root.rightPadding
        visible: root.length === 0 && root.preeditText === ""
        text: root.prompt
        size: root.font.pixelSize
        color: Theme.faint
        Accessible.ignored: true
    }
}
