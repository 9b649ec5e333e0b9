import QtQuick
import Tarnwick

/// The ring around a filled shape that has the keyboard. It is a little outside of the shape, so that it shows.
Rectangle {
    anchors.fill: parent
    anchors.margins: -3
    radius: (parent as Rectangle).radius + 3
    color: "transparent"
    border.width: 2
    border.color: Theme.blue
}
