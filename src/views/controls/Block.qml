import QtQuick
import Tarnwick

/// A group of controls or texts on a faint rounded background.
Rectangle {
    id: root

    default property alias content: column.data
    property alias spacing: column.spacing
    property real padding: 12

    implicitHeight: column.implicitHeight + 2 * padding
    radius: Theme.radiusCard
    color: Theme.layer(0.04)

    Column {
        id: column

        x: root.padding
        y: root.padding
        width: root.width - 2 * root.padding
        spacing: 8
    }
}
