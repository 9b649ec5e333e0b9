pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Tarnwick

/// A menu's list of entries, in a window of its own: it is not cut off where the popover ends. It does not take the
/// keyboard from the popover.
Window {
    id: root

    required property list<cardMenuEntry> entries
    required property string name
    /// The screen that it stays on, in the coordinates of the desktop, as all of these.
    required property rect area
    /// Its upper left corner; where it does not fit, its right edge is at `leftOf`, and its lower one at `above`.
    required property point corner
    property real leftOf: corner.x
    property real above: corner.y
    /// The list has one of its own, which it sets to 0 for new entries.
    property int currentIndex: -1
    signal chosen(cardMenuEntry entry)
    signal pointed(int index)

    function chooseCurrent() {
        if (entries[currentIndex]?.canBeChosen)
            chosen(entries[currentIndex]);
    }
    /// Where an entry begins, from the window's upper edge less its padding.
    function topOf(index: int): real {
        return list.itemAtIndex(index)?.y ?? 0;
    }

    /// Moves to the next entry that can be chosen, and past the last one to the first.
    function step(by: int) {
        let index = currentIndex < 0 && by < 0 ? entries.length : currentIndex;
        for (let passed = 0; passed < entries.length; ++passed) {
            index = (index + by + entries.length) % entries.length;
            if (entries[index].canBeChosen) {
                currentIndex = index;
                return;
            }
        }
    }

    onCurrentIndexChanged: list.positionViewAtIndex(currentIndex, ListView.Contain)
    flags: Qt.ToolTip | Qt.FramelessWindowHint
    color: Theme.roundsWindows ? "transparent" : Theme.menu
    width: 304
    height: Math.min(list.contentHeight + 2 * list.y, area.height)
    x: Math.max(area.x, corner.x + width <= area.right ? corner.x : leftOf - width)
    y: Math.max(area.y, corner.y + height <= area.bottom ? corner.y : above - height)

    Rectangle {
        anchors.fill: parent
        radius: Theme.roundsWindows ? 8 : 0
        color: Theme.menu
        border.color: Theme.windowEdge
    }
    ListView {
        id: list

        x: 5
        y: 5
        width: root.width - 2 * x
        height: root.height - 2 * y
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        keyNavigationEnabled: false
        model: root.entries
        delegate: CardMenuRow {
            required property int index
            required property cardMenuEntry modelData

            width: list.width
            entry: modelData
            isCurrent: index === root.currentIndex
            onChosen: root.chosen(entry)
            onPointed: {
                root.currentIndex = index;
                root.pointed(index);
            }
        }
        T.ScrollBar.vertical: ListScrollBar {}
        Accessible.role: Accessible.PopupMenu
        Accessible.name: root.name
    }
}
