import QtQuick
import Tarnwick

/// This computer's own figures.
TourPage {
    id: root

    spacing: 10

    Rectangle {
        width: parent.width
        height: 50
        radius: Theme.radiusCard
        color: Theme.layer(0.04)

        Symbol {
            x: 14
            anchors.verticalCenter: parent.verticalCenter
            name: "macmini.fill"
            side: 24
            color: Theme.blue
        }
        PlainText {
            x: 50
            y: 9
            width: parent.width - x - 14
            text: root.tour.content.machineHeading
            size: 13
            font.weight: Font.Bold
        }
        PlainText {
            x: 50
            y: 27
            width: parent.width - x - 14
            text: root.tour.content.machineIdentity
            size: 10
            color: Theme.secondary
        }
    }
    TourMetrics {
        width: parent.width
        group: root.tour.content.loads
    }
    TourMetrics {
        width: parent.width
        group: root.tour.content.thermals
    }
}
