import QtQuick
import Tarnwick

/// How to support the product.
Block {
    id: root

    required property SettingsModel settings

    Item {
        width: parent.width
        height: 18

        Symbol {
            id: mark

            anchors.verticalCenter: parent.verticalCenter
            name: "heart.circle.fill"
            color: Theme.pink
        }
        PlainText {
            anchors.left: mark.right
            anchors.leftMargin: 6
            anchors.verticalCenter: parent.verticalCenter
            text: root.settings.words.support
            size: 12
            font.weight: Font.DemiBold
        }
        Capsule {
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            text: root.settings.words.price
            textWeight: Font.DemiBold
            tint: Theme.textColor(ColorRole.Green)
            color: Theme.translucent(Theme.green, 0.1)
        }
    }
    PlainText {
        width: parent.width
        wrapMode: Text.Wrap
        maximumLineCount: 4
        lineHeight: 1.15
        text: root.settings.words.plea
        size: 10
        color: Theme.secondary
    }
    Row {
        id: links

        width: parent.width
        spacing: 8

        PushButton {
            id: donate

            objectName: "donate"
            symbol: "cup.and.saucer.fill"
            text: root.settings.words.donate
            Accessible.role: Accessible.Link
            onClicked: root.settings.openDonationPage()
        }
        PushButton {
            objectName: "web"
            width: links.width - links.spacing - donate.width
            symbol: "globe"
            text: root.settings.words.webSite
            Accessible.role: Accessible.Link
            onClicked: root.settings.openWebSite()
        }
    }
}
