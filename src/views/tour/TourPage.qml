import QtQuick
import Tarnwick

/// What the steps after the welcome have in common: their title is in one place, and the rest below it.
Item {
    id: root

    required property OnboardingModel tour
    required property tourStep step
    property real margin: 18 // as of the head and the buttons
    property alias spacing: column.spacing
    property alias titleSize: title.titleSize
    property alias lineSize: title.lineSize
    default property alias content: column.data

    Column {
        id: column

        x: root.margin
        y: 16
        width: root.width - 2 * x

        TourTitle {
            id: title

            width: parent.width
            step: root.step
        }
    }
}
