pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick

/// The containers of a server, one row each, in the order given.
Column {
    id: root

    required property serverCardContent card
    required property CardActions actions

    spacing: 6

    Repeater {
        model: ContainerListModel {
            rows: root.card.containers
        }
        delegate: ContainerRow {
            width: root.width
            restartHelp: root.actions.words.restart
            onShellRequested: root.actions.openShell(root.card.id, content.id)
            onRestartRequested: root.actions.restart(root.card.id, content.id)
        }
    }
}
