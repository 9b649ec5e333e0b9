import QtQuick
import Tarnwick

/// A group of the settings on a faint rounded background.
Rectangle {
    id: root

    default property alias content: column.data
    property alias spacing: column.spacing

    implicitHeight: column.implicitHeight + 24
    radius: Theme.radiusCard
    color: Theme.layer(0.04)

    Column {
        id: column

        x: 12
        y: 12
        width: root.width - 24
    }
}
