pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick

/// The pins to try: they are the real ones.
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
                Row {
                    anchors.right: parent.right
                    spacing: 6

                    Repeater {
                        model: root.tour.presets
                        delegate: PushButton {
                            required property pinPresetButton modelData

                            objectName: text
                            implicitHeight: 22
                            horizontalPadding: 8
                            text: modelData.caption
                            onClicked: root.tour.pins.choose(modelData.preset)
                        }
                    }
                }
            }
            Repeater {
                model: root.tour.pins
                delegate: CheckRow {
                    required property int item
                    required property string title
                    required property string example
                    required property bool pinned

                    objectName: title
                    width: parent?.width ?? 0
                    text: title
                    detail: example
                    detailTint: pinned ? Theme.textColor(ColorRole.Blue) : Theme.secondary
                    checked: pinned
                    Accessible.description: example
                    onToggled: root.tour.pins.toggle(item)
                }
            }
        }
    }
}
