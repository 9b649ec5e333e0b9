pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Tarnwick

/// The context menu of a card; the pin submenu opens in its place. Arrows move, Return chooses, Left goes back from
/// the submenu, Escape closes.
T.Popup {
    id: root

    required property serverCardContent card
    required property CardActions actions
    property bool showsPins: false
    /// The item that gets the keyboard back when the menu closes.
    property Item focusedBefore: null

    function choose(entry: cardMenuEntry) {
        if (entry.opensSubmenu) {
            showsPins = true;
            return;
        }
        close();
        actions.choose(card.id, entry);
    }

    function rowAt(index: int): CardMenuRow {
        return list.itemAtIndex(index) as CardMenuRow;
    }

    /// Moves to the next entry that can be chosen, and past the last one to the first.
    function step(by: int) {
        let index = list.currentIndex < 0 && by < 0 ? list.count : list.currentIndex;
        for (let passed = 0; passed < list.count; ++passed) {
            index = (index + by + list.count) % list.count;
            if (rowAt(index)?.canBeChosen) {
                list.currentIndex = index;
                return;
            }
        }
    }

    margins: 8
    padding: 5
    onAboutToShow: focusedBefore = parent.Window.activeFocusItem
    onClosed: focusedBefore?.forceActiveFocus(Qt.PopupFocusReason)
    onShowsPinsChanged: list.currentIndex = -1
    modal: true
    focus: true
    implicitWidth: 304
    implicitHeight: Math.min(list.contentHeight + topPadding + bottomPadding, (parent?.Window.height ?? 0) - 2 * margins)

    background: Rectangle {
        radius: 8
        color: Theme.menu
        border.color: Theme.layer(0.16)
    }
    ListView {
        id: list

        anchors.fill: parent
        clip: true
        focus: true
        boundsBehavior: Flickable.StopAtBounds
        currentIndex: -1
        highlightMoveDuration: 0
        keyNavigationEnabled: false
        // Rows out of sight exist, too, so that the arrow keys can skip them.
        cacheBuffer: 1000
        model: root.showsPins ? root.actions.pinMenu() : root.actions.menu(root.card.id)
        delegate: CardMenuRow {
            required property int index
            required property cardMenuEntry modelData

            width: list.width
            entry: modelData
            isCurrent: index === list.currentIndex
            onChosen: root.choose(entry)
            onPointed: list.currentIndex = index
        }
        T.ScrollBar.vertical: ListScrollBar {}
        Accessible.role: Accessible.PopupMenu
        Accessible.name: root.showsPins ? root.actions.words.pinMenu : root.card.name
        Keys.onDownPressed: root.step(1)
        Keys.onUpPressed: root.step(-1)
        Keys.onLeftPressed: root.showsPins = false
        Keys.onRightPressed: if (root.rowAt(currentIndex)?.entry.opensSubmenu) root.showsPins = true
        Keys.onReturnPressed: root.rowAt(currentIndex)?.choose()
        Keys.onEnterPressed: root.rowAt(currentIndex)?.choose()
        Keys.onSpacePressed: root.rowAt(currentIndex)?.choose()
    }
}
