pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick

/// Lets the user try pinning. It changes the real pins.
Item {
    id: root

    required property OnboardingModel tour
    required property tourStep step

    Column {
        anchors.centerIn: parent
        width: parent.width - 48
        spacing: 12

        TourTitle {
            width: parent.width
            step: root.step
        }
        MockMenuBar {
            width: parent.width
            words: root.tour.words
            preview: root.tour.content.menuBarPreview
        }
        Block {
            width: parent.width
            spacing: 2

            Item {
                width: parent.width
                height: 26

                PlainText {
                    anchors.verticalCenter: parent.verticalCenter
                    anchors.verticalCenterOffset: -2
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
}
