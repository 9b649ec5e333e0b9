pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick

/// The end of the tour.
TourPage {
    id: root

    margin: 44
    spacing: 16
    titleSize: 22
    lineSize: 13

    component Paragraph: PlainText {
        wrapMode: Text.Wrap
        maximumLineCount: 3
        lineHeight: 1.2
        color: Theme.secondary
    }

    Block {
        width: parent.width
        padding: 14
        color: Theme.translucent(Theme.green, 0.1)

        Item {
            width: parent.width
            height: 20

            Symbol {
                id: seal

                anchors.verticalCenter: parent.verticalCenter
                name: "checkmark.seal.fill"
                side: 20
                color: Theme.green
            }
            PlainText {
                anchors.left: seal.right
                anchors.leftMargin: 8
                anchors.verticalCenter: parent.verticalCenter
                text: root.tour.words.unlocked
                size: 13
                font.weight: Font.DemiBold
            }
            Capsule {
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                implicitHeight: 18
                text: root.tour.words.price
                textWeight: Font.DemiBold
                tint: Theme.textColor(ColorRole.Green)
                color: Theme.translucent(Theme.green, 0.06)
            }
        }
        Paragraph {
            width: parent.width
            text: root.tour.words.unlockedFeatures
        }
    }
    PrimaryButton {
        objectName: "start"
        anchors.horizontalCenter: parent.horizontalCenter
        isLarge: true
        horizontalPadding: 20
        symbol: "arrow.right.circle.fill"
        text: root.tour.words.start
        onClicked: root.tour.complete()
        Component.onCompleted: forceActiveFocus()
    }
    Block {
        width: parent.width
        padding: 14

        Item {
            width: parent.width
            height: 20

            Symbol {
                id: heart

                anchors.verticalCenter: parent.verticalCenter
                name: "heart.fill"
                color: Theme.pink
            }
            PlainText {
                anchors.left: heart.right
                anchors.leftMargin: 8
                anchors.verticalCenter: parent.verticalCenter
                text: root.tour.words.support
                size: 12
                font.weight: Font.DemiBold
            }
            TextLink {
                objectName: text
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                text: root.tour.words.donationPage
                onClicked: root.tour.open(root.tour.links[0])
            }
        }
        Paragraph {
            width: parent.width
            text: root.tour.words.plea
        }
        Row {
            id: links

            width: parent.width
            spacing: 8

            Repeater {
                model: root.tour.links
                delegate: PushButton {
                    required property int index
                    required property tourLink modelData

                    objectName: text
                    width: (links.width - links.spacing) * (index === 0 ? 0.46 : 0.54)
                    symbol: modelData.symbol
                    text: modelData.caption
                    Accessible.role: Accessible.Link
                    onClicked: root.tour.open(modelData)
                }
            }
        }
    }
}
