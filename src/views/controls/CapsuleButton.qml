import QtQuick
import Tarnwick

/// A capsule to press. Its accessible name is `text`.
Pressable {
    id: root

    property string symbol
    property color tint: Theme.secondary
    property int textWeight: Font.Normal

    implicitHeight: implicitContentHeight
    radius: 5
    fill: Theme.layer(0.04)
    hoverLayer: 0.06
    pressLayer: 0.12

    contentItem: Capsule {
        symbol: root.symbol
        text: root.text
        tint: root.tint
        textWeight: root.textWeight
        color: "transparent"
    }
}
