import QtQuick
import Tarnwick

/// A line of a card's menu.
Item {
    id: root

    required property cardMenuEntry entry
    property bool isCurrent: false
    readonly property color tint: entry.isDestructive ? Theme.textColor(ColorRole.Red) : Theme.primary
    signal chosen
    signal pointed

    function choose() {
        if (entry.canBeChosen)
            chosen();
    }

    implicitHeight: entry.isDivider ? 9 : 26
    Accessible.role: entry.isDivider ? Accessible.Separator : Accessible.MenuItem
    Accessible.name: entry.text
    Accessible.onPressAction: choose()

    Divider {
        visible: root.entry.isDivider
        x: 8
        y: 4
        width: root.width - 16
    }
    Rectangle {
        anchors.fill: parent
        visible: root.isCurrent && root.entry.canBeChosen
        radius: 5
        color: Theme.layer(0.08)
    }
    Item {
        anchors.fill: parent
        visible: !root.entry.isDivider
        opacity: root.entry.isEnabled ? 1 : 0.4

        Symbol {
            id: drawing

            x: 8
            anchors.verticalCenter: parent.verticalCenter
            name: root.entry.symbol
            color: root.tint
        }
        PlainText {
            anchors.left: drawing.right
            anchors.leftMargin: 8
            anchors.right: submenu.left
            anchors.rightMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            text: root.entry.text
            size: 12
            color: root.tint
        }
        Symbol {
            id: submenu

            anchors.right: parent.right
            anchors.rightMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            visible: root.entry.opensSubmenu
            name: "chevron.right"
            color: Theme.secondary
        }
    }
    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        onPositionChanged: root.pointed()
        onClicked: root.choose()
    }
}
