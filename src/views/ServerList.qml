pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Tarnwick

/// The cards of the fleet; while they are filtered, as high as before. Dragging a card over another one reorders the fleet
/// at once.
Item {
    id: root

    required property PopoverModel popover
    readonly property CardActions actions: popover.cardActions
    readonly property bool isFiltered: popover.content.isFiltered
    /// The greatest height.
    required property real longest
    /// How much of that height the filter's field takes.
    property real taken: 0
    /// Up, from the first card.
    signal leftAbove

    property bool isHeld: false
    property real heldHeight: 0
    readonly property Item focused: Window.activeFocusItem
    /// A card is on its way out.
    readonly property bool isRemoving: removal.running

    property bool isDragging: false
    property real pointerY: 0
    property Item enteredCard: null

    function followDrag(position: point) {
        isDragging = true;
        pointerY = Math.max(0, Math.min(mapFromItem(null, position.x, position.y).y, height - 1));
        enterCard();
    }

    /// A card under the pointer is entered once, even if the reorder moves other cards through the same place.
    function enterCard() {
        const card = list.itemAt(0, list.contentY + pointerY) as ServerCardView;
        if (card === enteredCard)
            return;
        enteredCard = card;
        if (card)
            actions.dragEntered(card.content.id);
    }

    function endDrag() {
        isDragging = false;
        enteredCard = null;
    }

    /// How far a drag near an end scrolls at each tick.
    function scrollStep(): real {
        const edge = 28;
        return pointerY < edge ? -8 : pointerY > height - edge ? 8 : 0;
    }

    /// Gives the first card the keyboard.
    function enter() {
        list.itemAtIndex(0)?.forceActiveFocus(Qt.TabFocusReason);
    }

    /// Scrolls to a card or a control in one.
    function reveal(item: Item) {
        const margin = 12;
        const top = item.mapToItem(list.contentItem, 0, 0).y - margin;
        if (top < list.contentY)
            list.contentY = top;
        else
            list.contentY = Math.min(top, Math.max(list.contentY, top + item.height + 2 * margin - list.height));
    }

    /// While somebody types the cards change at once, and the window keeps its size.
    function followFilter() {
        removal.stop();
        if (isFiltered && !isHeld) {
            heldHeight = implicitHeight;
            isHeld = true;
        }
        list.forceLayout();
        list.positionViewAtBeginning();
        list.contentY = list.originY - list.topMargin;
        Theme.isStill = false;
        isHeld = isFiltered;
    }

    implicitHeight: isHeld ? Math.max(heldHeight - taken, 84)
                           : Math.min(list.contentHeight + list.topMargin + list.bottomMargin, longest)
    clip: true
    onFocusedChanged: {
        // What is pressed stays where it is.
        if (!(focused as ServerCardView) && !(focused as Pressable)?.visualFocus)
            return;
        for (let item = focused; item; item = item.parent) {
            if (item === list.contentItem)
                return reveal(focused);
        }
    }

    // A list that becomes shorter by a card takes as long as the cards that move up.
    Behavior on implicitHeight {
        enabled: removal.running
        NumberAnimation {
            duration: Theme.listDuration
            easing.type: Easing.InOutQuad
        }
    }
    Timer {
        id: removal

        interval: Theme.listDuration
    }
    Connections {
        target: root.popover.servers
        function onRowsRemoved() {
            if (!root.isHeld)
                removal.restart();
        }
        function onFilterWillChange() {
            Theme.isStill = true;
        }
        function onFilterChanged() {
            root.followFilter();
        }
    }

    ListView {
        id: list

        objectName: "serverList"
        x: 12
        width: root.width - 24
        // Unfiltered always at the greatest height: then all cards of a short list exist, and its content's height is exact.
        height: root.isFiltered ? root.height : root.longest
        topMargin: 12
        bottomMargin: 12
        spacing: 12
        cacheBuffer: 300
        boundsBehavior: Flickable.StopAtBounds
        keyNavigationEnabled: false
        currentIndex: -1
        model: root.popover.servers
        Accessible.role: Accessible.List
        Accessible.name: root.popover.words.servers
        Accessible.description: root.popover.words.howToFind

        delegate: ServerCardView {
            required property int index

            width: list.width
            actions: root.actions
            onDragMoved: position => root.followDrag(position)
            onDragEnded: root.endDrag()
            Keys.onUpPressed: {
                if (index > 0)
                    list.itemAtIndex(index - 1)?.forceActiveFocus(Qt.TabFocusReason);
                else
                    root.leftAbove();
            }
            Keys.onDownPressed: list.itemAtIndex(index + 1)?.forceActiveFocus(Qt.TabFocusReason)
            Component.onCompleted: followsSlowly = true
        }

        T.ScrollBar.vertical: ListScrollBar {
            parent: root
            x: root.width - width
            height: root.height
        }

        move: ListMotion {
            duration: root.isDragging ? Theme.reorderDuration : Theme.listDuration
        }
        displaced: ListMotion {
            duration: root.isDragging ? Theme.reorderDuration : Theme.listDuration
        }
        add: Transition {
            NumberAnimation {
                property: "opacity"
                from: 0
                to: 1
                duration: Theme.listDuration
                easing.type: Easing.InOutQuad
            }
        }
        remove: Transition {
            NumberAnimation {
                property: "opacity"
                to: 0
                duration: Theme.listDuration / 2 // gone before others move over it
            }
        }
    }

    PlainText {
        anchors.centerIn: parent
        width: Math.min(implicitWidth, parent.width - 60)
        visible: text !== ""
        text: root.popover.content.nothingFoundText
        color: Theme.secondary
    }
    /// A drag that has left the window and comes back.
    DropArea {
        anchors.fill: parent
        keys: ["text/plain"]
        onEntered: drag => drag.accepted = root.actions.accepts(drag.text)
        onPositionChanged: drag => root.followDrag(mapToItem(null, drag.x, drag.y))
        onExited: root.endDrag()
        onDropped: drop => {
            drop.accept(Qt.MoveAction);
            root.endDrag();
            root.actions.endDrag();
        }
    }
    ScrollFade {
        width: root.width - 8
        height: root.height
        area: list
    }
    Timer {
        id: scroller

        interval: 16
        repeat: true
        running: root.isDragging && root.scrollStep() !== 0
        onTriggered: {
            const top = list.originY - list.topMargin;
            const bottom = list.originY + list.contentHeight + list.bottomMargin - list.height;
            list.contentY = Math.max(top, Math.min(list.contentY + root.scrollStep(), bottom));
            root.enterCard();
        }
    }
}
