import QtQuick
import Tarnwick

/// How cards move to their new places. A card that was still fading in goes on to be whole.
Transition {
    id: root

    property int duration: Theme.listDuration

    NumberAnimation {
        property: "y"
        duration: root.duration
        easing.type: Easing.InOutQuad
    }
    NumberAnimation {
        property: "opacity"
        to: 1
        duration: root.duration
    }
}
