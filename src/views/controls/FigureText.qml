import QtQuick
import Tarnwick

/// One line of text with figures that change. It is silent for screen readers unless its user names it.
TabularText {
    property alias size: root.font.pixelSize

    id: root
    color: Theme.primary
    font.family: Theme.family
    font.pixelSize: 11
}
