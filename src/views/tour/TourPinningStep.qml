pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick

/// The pins to try: they are the real ones.
Item {
    id: root

    required property OnboardingModel tour

    PinListModel {
        id: pins

        store: root.tour.store
    }
    Column {
        anchors.centerIn: parent
        width: parent.width - 48
        spacing: 12

        TourTitle {
            width: parent.width
            title: "Custom Menu Bar Multi-Pinning"
            line: "Interactive demo: Toggle any checkbox below to see your menu bar update live:"
        }
        MockMenuBar {
            width: parent.width
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
                    text: "PIN TO MENU BAR"
                    size: 10
                    font.weight: Font.DemiBold
                    color: Theme.secondary
                }
                Row {
                    anchors.right: parent.right
                    spacing: 6

                    PushButton {
                        objectName: text
                        implicitHeight: 22
                        horizontalPadding: 8
                        text: "Pin All"
                        onClicked: pins.choose(PinListModel.All)
                    }
                    PushButton {
                        objectName: text
                        implicitHeight: 22
                        horizontalPadding: 8
                        text: "Reset"
                        onClicked: pins.choose(PinListModel.Standard)
                    }
                }
            }
            Repeater {
                model: pins
                delegate: CheckRow {
                    required property int index
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
                    onToggled: pins.toggle(index)
                }
            }
        }
    }
}
