pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Tarnwick

/// A column that scrolls when it is higher than its room. It scrolls to the control that gets the keyboard focus. Its
/// right 10 pixels are for the scroll bar.
Flickable {
    id: root

    default property alias content: column.data
    property alias spacing: column.spacing
    readonly property Item focused: Window.activeFocusItem

    contentWidth: width
    contentHeight: column.implicitHeight
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    onFocusedChanged: {
        for (let item = focused; item; item = item.parent) {
            if (item === column) {
                reveal(focused.mapToItem(column, 0, 0).y, focused.height);
                return;
            }
        }
    }

    function reveal(top: real, extent: real) {
        const margin = 8;
        const highest = Math.max(0, contentHeight - height);
        if (top - margin < contentY)
            contentY = Math.max(0, top - margin);
        else if (top + extent + margin > contentY + height)
            contentY = Math.min(highest, top + extent + margin - height);
    }

    readonly property ScrollFade fade: ScrollFade {
        parent: root
        width: root.width - 10
        height: root.height
        area: root
    }

    T.ScrollBar.vertical: ListScrollBar {}

    Column {
        id: column

        width: root.width
    }
}
