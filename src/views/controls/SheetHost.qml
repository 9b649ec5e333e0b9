pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Tarnwick

/// Shows one sheet over the window, which takes the sheet's size. It keeps the keyboard focus inside, and asks to be
/// dismissed when Escape is pressed. Later sheets lie over earlier ones. The sheet is built each time it is presented.
T.Popup {
    id: root

    /// Its implicit size is the size of the sheet, where there is room for it.
    property Component sheet
    property bool presented: false
    property real radius: 0
    required property real longest
    /// The sheet while it is presented.
    property Item shown: null
    /// Gets the keyboard focus back when the sheet closes.
    property Item focusedBefore: null
    signal dismissed

    visible: presented && sheet !== null
    modal: true
    dim: false
    focus: true
    closePolicy: T.Popup.CloseOnEscape
    implicitWidth: implicitContentWidth
    implicitHeight: implicitContentHeight
    height: Math.min(implicitHeight, longest)
    onAboutToShow: {
        focusedBefore = parent.Window.activeFocusItem;
        shown = sheet.createObject(contentItem, { "height": Qt.binding(() => root.height) }) as Item;
    }
    onClosed: {
        const leaving = shown;
        shown = null;
        leaving?.destroy();
        focusedBefore?.forceActiveFocus();
        dismissed();
    }

    contentItem: FocusScope {
        focus: true
        implicitWidth: root.shown?.implicitWidth ?? 0
        implicitHeight: root.shown?.implicitHeight ?? 0
    }
    background: Rectangle {
        radius: root.radius
        color: Theme.window
        border.color: Theme.windowEdge
    }
}
