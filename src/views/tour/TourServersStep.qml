import QtQuick
import Tarnwick

/// A server's card, as the popover shows it.
TourPage {
    id: root

    spacing: 10

    ServerCardView {
        width: parent.width
        content: root.tour.demoCard
        actions: root.tour.cardActions
    }
    Item {
        width: parent.width
        height: note.height

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: "info.circle"
            color: Theme.blue
        }
        PlainText {
            id: note

            x: 22
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
