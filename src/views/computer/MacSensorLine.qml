import QtQuick
import Tarnwick

/// One temperature sensor.
Item {
    id: root

    required property macSensorRow content

    objectName: content.name
    implicitHeight: 36

    PlainText {
        x: 12
        y: 5
        width: pill.x - x - 8
        text: root.content.name
    }
    PlainText {
        x: 12
        y: 19
        width: pill.x - x - 8
        text: root.content.category
        size: 9
        color: Theme.secondary
    }
    Capsule {
        id: pill

        x: root.width - width - 12
        anchors.verticalCenter: parent.verticalCenter
        implicitHeight: 18
        text: root.content.temperature
        textWeight: Font.DemiBold
        tint: Theme.textColor(root.content.role)
        color: Theme.translucent(Theme.color(root.content.role), 0.1)
    }
}
