import QtQuick
import Tarnwick

/// A server's card, as the popover shows it.
Item {
    id: root

    required property OnboardingModel tour
    required property tourStep step

    Column {
        anchors.centerIn: parent
        width: parent.width - 40
        spacing: 8

        TourTitle {
            width: parent.width
            step: root.step
        }
        Rectangle {
            width: parent.width
            height: card.height + 8
            radius: Theme.radiusWindow
            color: "transparent"
            border.color: Theme.layer(0.1)

            ServerCardView {
                id: card

                x: 4
                y: 4
                width: parent.width - 8
                content: root.tour.demoCard
                actions: root.tour.cardActions
            }
        }
        Item {
            width: parent.width
            height: note.height

            Symbol {
                name: "info.circle"
                side: 13
                color: Theme.blue
            }
            PlainText {
                id: note

                x: 20
                width: parent.width - x
                wrapMode: Text.Wrap
                maximumLineCount: 2
                lineHeight: 1.2
                text: root.tour.words.serversNote
                size: 10
                color: Theme.secondary
            }
        }
    }
}
