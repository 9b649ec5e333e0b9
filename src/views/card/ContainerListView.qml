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
            width: root.width
            height: list.rowHeight
            restartHelp: root.actions.words.restart
            onShellRequested: root.actions.openShell(root.card.id, content.id)
            onRestartRequested: root.actions.restart(root.card.id, content.id)
        }
    }
}
