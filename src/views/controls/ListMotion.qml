import QtQuick
import Tarnwick

/// How the rows of a list move to their new places. A row that was still fading in becomes fully visible as it moves.
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
