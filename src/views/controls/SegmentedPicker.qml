pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Tarnwick

/// One choice of a few, side by side. The left and right arrow keys choose too.
FocusScope {
    id: root

    property list<string> captions
    property int current: 0
    signal chosen(int index)

    function choose(index: int) {
        if (index >= 0 && index < captions.length && index !== current)
            chosen(index);
    }

    implicitHeight: 24
    activeFocusOnTab: true
    Keys.onLeftPressed: choose(current - 1)
    Keys.onRightPressed: choose(current + 1)
    Accessible.role: Accessible.PageTabList
    Accessible.name: captions[current] ?? ""

    Rectangle {
        anchors.fill: parent
        radius: Theme.radiusRow
        color: Theme.layer(0.07)
        border.width: root.activeFocus ? 2 : 0
        border.color: Theme.blue
    }
    Row {
        id: row

        anchors.fill: parent
        anchors.margins: 2

        Repeater {
            model: root.captions

            T.AbstractButton {
                id: segment

                required property int index
                required property string modelData
                readonly property bool isCurrent: index === root.current

                width: row.width / root.captions.length
                height: row.height
                text: modelData
                focusPolicy: Qt.NoFocus
                Accessible.role: Accessible.PageTab
                Accessible.selected: isCurrent
                onClicked: root.choose(index)

                background: Item {
                    Rectangle {
                        y: 1
                        width: parent.width
                        height: parent.height
                        visible: segment.isCurrent && !Theme.dark
                        radius: 5
                        color: Theme.layer(0.08)
                    }
                    Rectangle {
                        anchors.fill: parent
                        radius: 5
                        color: segment.isCurrent ? Theme.segment
                                                 : segment.hovered ? Theme.layer(0.04) : "transparent"
                    }
                }
                contentItem: PlainText {
                    horizontalAlignment: Text.AlignHCenter
                    text: segment.text
                    size: 12
                    font.weight: segment.isCurrent ? Font.DemiBold : Font.Normal
                    Accessible.ignored: true
                }
            }
        }
    }
}
