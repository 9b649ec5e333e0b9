pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Tarnwick

/// Shows one sheet over the window. It dims what is below, keeps the keyboard focus inside, and asks to be dismissed
/// when Escape is pressed. Later sheets lie over earlier ones. The sheet is built each time it is presented.
T.Popup {
    id: root

    /// Its implicit size is the size of the sheet.
    property Component sheet
    property bool presented: false
    property real radius: 0
    readonly property size room: visible ? Qt.size(implicitWidth, implicitHeight) : Qt.size(0, 0)
    /// The sheet while it is presented.
    property Item shown: null
    /// Gets the keyboard focus back when the sheet closes.
    property Item focusedBefore: null
    signal dismissed

    visible: presented && sheet !== null
    x: Math.round(((parent?.width ?? 0) - implicitWidth) / 2)
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape
    implicitWidth: implicitContentWidth
    implicitHeight: implicitContentHeight
    onAboutToShow: {
        focusedBefore = parent.Window.activeFocusItem;
        shown = sheet.createObject(contentItem) as Item;
    }
    onClosed: {
        shown?.destroy();
        focusedBefore?.forceActiveFocus(Qt.PopupFocusReason);
        dismissed();
    }

    contentItem: FocusScope {
        focus: true
        implicitWidth: root.shown?.implicitWidth ?? 0
        implicitHeight: root.shown?.implicitHeight ?? 0
    }
    T.Overlay.modal: Rectangle {
        radius: root.radius
        color: Theme.shade
    }
    background: Rectangle {
        radius: root.radius
        color: Theme.window
        border.color: Theme.layer(0.14)
    }
}
