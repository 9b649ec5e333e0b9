import QtQuick
import Tarnwick

/// One temperature sensor.
Item {
    id: root

    required property macSensorRow sensor

    objectName: sensor.name
    implicitHeight: 36

    PlainText {
        x: 12
        y: 5
        width: pill.x - x - 8
        text: root.sensor.name
    }
    PlainText {
        x: 12
        y: 19
        width: pill.x - x - 8
        text: root.sensor.category
        size: 9
        color: Theme.secondary
    }
    Capsule {
        id: pill

        x: root.width - width - 12
        anchors.verticalCenter: parent.verticalCenter
        implicitHeight: 18
        text: root.sensor.temperature
        textWeight: Font.DemiBold
        tint: Theme.textColor(root.sensor.role)
        color: Theme.translucent(Theme.color(root.sensor.role), 0.1)
    }
}
