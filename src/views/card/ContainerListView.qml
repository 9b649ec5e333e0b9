pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick

/// The containers of a server, one row each, in the order given. Only rows near those that can be seen exist.
Item {
    id: root

    required property serverCardContent card
    required property CardActions actions
    /// The part of this item that the list of cards shows.
    required property real shownTop
    required property real shownHeight
    readonly property real topPadding: 4
    readonly property real bottomPadding: 12

    implicitHeight: topPadding + list.count * (list.rowHeight + list.spacing) - list.spacing + bottomPadding

    ListView {
        id: list

        readonly property real rowHeight: 38
        readonly property real least: root.topPadding
        readonly property real most: root.implicitHeight - root.bottomPadding

        y: Math.max(least, Math.min(root.shownTop, most))
        width: root.width
        height: Math.max(0, Math.min(root.shownTop + root.shownHeight, most) - y)
        contentY: y - least
        spacing: 6
        cacheBuffer: 200
        interactive: false
        keyNavigationEnabled: false
        currentIndex: -1
        model: ContainerListModel {
            rows: root.card.containers
        }
        delegate: ContainerRow {
            id: row

            width: root.width
            height: list.rowHeight
            words: root.actions.words
            onShellRequested: root.actions.openShell(root.card.id, content.id)
            onRestartRequested: root.actions.restart(root.card.id, content.id)
            onStopConfirmed: root.actions.stop(root.card.id, content.id)
            onStopCancelled: root.actions.cancelStop()
            onMenuRequested: position => {
                const popup = menu.createObject(row, {
                    "x": position.x,
                    "y": position.y,
                    "entries": root.actions.containerMenu(root.card.id, content.id),
                    "name": content.name
                }) as CardMenuPopup;
                popup.open();
            }
        }
    }

    Component {
        id: menu

        CardMenuPopup {
            card: root.card
            actions: root.actions
            onClosed: destroy()
        }
    }
}
