import QtQuick
import QtQuick.Templates as T
import Tarnwick

/// The context menu of a card or of a container in it, and beside it the submenu of the pins. It has the keyboard while its
/// windows show the entries: arrows move, Return chooses, Right opens the submenu, Left closes it, Escape closes all.
T.Popup {
    id: root

    required property list<cardMenuEntry> entries
    required property string name
    /// Gets the id of the card's server with the entry.
    required property serverCardContent card
    required property CardActions actions
    property bool showsPins: false
    /// The entry that opened the submenu.
    property int opener: -1
    /// Whether the keys act on the submenu.
    property bool isInPins: false
    readonly property CardMenuWindow keyed: isInPins ? pins : main
    /// The item that gets the keyboard back when the menu closes.
    property Item focusedBefore: null
    readonly property rect area: Qt.rect(parent.Screen.virtualX, parent.Screen.virtualY, parent.Screen.width,
                                         parent.Screen.height)

    function choose(entry: cardMenuEntry) {
        if (entry.opensSubmenu) {
            showsPins = true;
            isInPins = true;
            return;
        }
        close();
        actions.choose(card.id, entry);
    }

    modal: true
    dim: false
    focus: true
    onAboutToShow: focusedBefore = parent.Window.activeFocusItem
    onClosed: focusedBefore?.forceActiveFocus()
    onShowsPinsChanged: {
        opener = showsPins ? main.currentIndex : -1;
        pins.currentIndex = -1;
    }

    contentItem: Item {
        focus: true
        Keys.onDownPressed: root.keyed.step(1)
        Keys.onUpPressed: root.keyed.step(-1)
        Keys.onLeftPressed: {
            root.isInPins = false;
            root.showsPins = false;
        }
        Keys.onRightPressed: {
            if (main.opensSubmenu && !root.isInPins) {
                main.chooseCurrent();
                pins.step(1);
            }
        }
        Keys.onReturnPressed: root.keyed.chooseCurrent()
        Keys.onEnterPressed: root.keyed.chooseCurrent()
        Keys.onSpacePressed: root.keyed.chooseCurrent()
    }

    CardMenuWindow {
        id: main

        readonly property bool opensSubmenu: entries[currentIndex]?.opensSubmenu ?? false

        transientParent: root.parent.Window.window
        visible: root.visible
        entries: root.entries
        name: root.name
        area: root.area
        corner: root.parent.mapToGlobal(root.x, root.y)
        onChosen: entry => root.choose(entry)
        onPointed: {
            root.isInPins = false;
            // The way to the submenu may lead across other entries.
            if (opensSubmenu !== root.showsPins)
                turn.restart();
            else
                turn.stop();
        }
    }
    CardMenuWindow {
        id: pins

        transientParent: root.parent.Window.window
        visible: root.visible && root.showsPins
        entries: root.showsPins ? root.actions.pinMenu() : []
        name: root.actions.words.pinMenu
        area: root.area
        corner: Qt.point(main.x + main.width - 4, main.y + main.topOf(root.opener))
        leftOf: main.x + 4
        above: root.area.bottom
        onChosen: entry => root.choose(entry)
        onPointed: {
            turn.stop();
            main.currentIndex = root.opener;
            root.isInPins = true;
        }
    }
    Timer {
        id: turn

        interval: 200
        onTriggered: root.showsPins = main.opensSubmenu
    }
}
