pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Tarnwick

/// The place of one sheet over its window: it dims what is below, keeps the keyboard inside, and asks to be dismissed
/// by Escape. Sheets stack in the order in which they were presented. The content is built anew each time.
T.Popup {
    id: root

    /// Its implicit size is the sheet's.
    property Component sheet
    property bool presented: false
    property real radius: 0
    readonly property size room: visible ? Qt.size(implicitWidth, implicitHeight) : Qt.size(0, 0)
    /// The sheet while it is presented.
    property Item shown: null
    /// Gets the keyboard back.
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
