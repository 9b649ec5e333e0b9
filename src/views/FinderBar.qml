import QtQuick
import Tarnwick

/// The text that the cards are filtered by, above them, and seen only while there is text. Its field has the keyboard when
/// nothing else has, so that input methods work from the first key on; whatever else has it forwards what is typed.
Item {
    id: root

    required property PopoverModel popover
    readonly property alias field: field
    readonly property bool isShown: field.length > 0 || field.preeditText !== ""
    /// Down: the keyboard is for the cards.
    signal steppedDown
    /// Tab or Shift-Tab while the field is not seen.
    signal passed(bool forward)

    function clear() {
        field.clear();
        field.forceActiveFocus();
        popover.showAll();
    }

    implicitHeight: isShown ? 34 : 0
    clip: true

    InputField {
        id: field

        x: 12
        y: 10
        width: root.width - 24
        leftPadding: 28
        rightPadding: found.width + 34
        focus: true
        activeFocusOnTab: root.isShown || activeFocus
        cursorVisible: activeFocus && root.isShown // no frames for what is not seen
        readOnly: root.popover.content.isEmpty
        Accessible.name: root.popover.words.find
        Accessible.description: root.popover.content.foundText
        onTextChanged: {
            if (text !== "")
                forceActiveFocus();
            root.popover.find(text);
        }
        Keys.onEscapePressed: event => {
            event.accepted = root.isShown || root.popover.content.isFiltered;
            if (event.accepted)
                root.clear();
        }
        Keys.onReturnPressed: root.popover.openFound()
        Keys.onEnterPressed: root.popover.openFound()
        Keys.onDownPressed: root.steppedDown()
        Keys.onTabPressed: event => {
            event.accepted = !root.isShown && activeFocus;
            if (event.accepted)
                root.passed(true);
        }
        Keys.onBacktabPressed: event => {
            event.accepted = !root.isShown && activeFocus;
            if (event.accepted)
                root.passed(false);
        }
        // No text begins with a space.
        Keys.onSpacePressed: event => event.accepted = length === 0

        Symbol {
            x: 8
            anchors.verticalCenter: parent.verticalCenter
            name: "magnifyingglass"
            side: 14
            color: Theme.secondary
        }
        FigureText {
            id: found

            anchors.right: clearing.left
            anchors.rightMargin: 2
            anchors.verticalCenter: parent.verticalCenter
            visible: root.isShown
            text: root.popover.content.foundText
            size: 10
            color: Theme.secondary
        }
        IconButton {
            id: clearing

            anchors.right: parent.right
            text: root.popover.words.stopFinding
            visible: root.isShown
            symbol: "xmark.circle.fill"
            tint: Theme.secondary
            activeTint: Theme.primary
            onClicked: root.clear()
        }
    }
}
