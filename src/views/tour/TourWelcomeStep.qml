pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick

/// The introduction.
Item {
    id: root

    required property OnboardingModel tour
    required property tourStep step

    Column {
        anchors.centerIn: parent
        width: parent.width - 88
        spacing: 14

        ApplicationIcon {
            anchors.horizontalCenter: parent.horizontalCenter
            side: 60
            color: Theme.blue
        }
        TourTitle {
            width: parent.width
            step: root.step
            titleSize: 22
            lineSize: 13
            longestLine: 380
        }
        Block {
            width: parent.width
            padding: 16
            spacing: 14

            Repeater {
                model: root.tour.bullets
                delegate: Item {
                    id: bullet

                    required property featureBullet modelData

                    width: parent?.width ?? 0
                    height: text.height

                    Symbol {
                        y: 1
                        name: bullet.modelData.symbol
                        side: 24
                        color: Theme.color(bullet.modelData.role)
                    }
                    Column {
                        id: text

                        x: 36
                        width: parent.width - x
                        spacing: 2

                        PlainText {
                            width: parent.width
                            text: bullet.modelData.title
                            size: 13
                            font.weight: Font.DemiBold
                        }
                        PlainText {
                            width: parent.width
                            wrapMode: Text.Wrap
                            maximumLineCount: 2
                            lineHeight: 1.15
                            text: bullet.modelData.subtitle
                            size: 12
                            color: Theme.secondary
                        }
                    }
                }
            }
        }
    }
}
