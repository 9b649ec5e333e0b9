pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick

/// Lets the user try pinning. It changes the real pins.
TourPage {
    id: root

    spacing: 12

    MockMenuBar {
        width: parent.width
        words: root.tour.words
        preview: root.tour.content.menuBarPreview
    }
    Block {
        width: parent.width
        spacing: 6

        Item {
            width: parent.width
            height: 24

            PlainText {
                anchors.verticalCenter: parent.verticalCenter
                text: root.tour.words.pinsHeading
                size: 10
                font.weight: Font.DemiBold
                color: Theme.secondary
            }
            PinPresetButtons {
                anchors.right: parent.right
                presets: root.tour.presets
                pins: root.tour.pins
            }
        }
        Repeater {
            model: root.tour.pins
            delegate: PinCheckRow {
                width: parent?.width ?? 0
                pins: root.tour.pins
            }
        }
    }
}
