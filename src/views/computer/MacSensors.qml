pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick

/// Every temperature sensor, under a line that opens and closes their list.
Rectangle {
    id: root

    required property MacInfoModel mac
    readonly property macInfoContent content: mac.content

    implicitHeight: header.height + list.height
    radius: Theme.radiusCard
    color: Theme.layer(0.04)

    Pressable {
        id: header

        objectName: "sensors"
        width: parent.width
        height: 34
        radius: root.radius
        text: root.content.sensorsCaption
        Accessible.checkable: true
        Accessible.checked: root.content.showsSensors
        onClicked: root.mac.toggleSensors()

        contentItem: Item {
            Symbol {
                x: 12
                anchors.verticalCenter: parent.verticalCenter
                name: "sensor.tag.radiowaves.forward"
                color: Theme.secondary
            }
            PlainText {
                x: 32
                anchors.verticalCenter: parent.verticalCenter
                width: parent.width - x - 32
                text: header.text
                size: 12
                font.weight: Font.DemiBold
                Accessible.ignored: true
            }
            Symbol {
                x: parent.width - width - 12
                anchors.verticalCenter: parent.verticalCenter
                name: root.content.sensorsSymbol
                color: Theme.secondary
            }
        }
    }
    Item {
        id: list

        y: header.height
        width: parent.width
        height: root.content.showsSensors ? rows.implicitHeight : 0
        clip: true

        Behavior on height {
            NumberAnimation {
                duration: Theme.reorderDuration
                easing.type: Easing.InOutQuad
            }
        }

        Column {
            id: rows

            width: parent.width
            bottomPadding: 6

            Divider {
                width: parent.width
            }
            Repeater {
                model: root.content.showsSensors || list.height > 0 ? root.mac.sensors : null
                delegate: MacSensorLine {
                    width: rows.width
                }
            }
        }
    }
}
