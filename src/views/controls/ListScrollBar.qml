import QtQuick
import QtQuick.Templates as T
import Tarnwick

/// A slim scroll bar, there only while there is something to scroll.
T.ScrollBar {
    id: root

    implicitWidth: 8
    padding: 2
    minimumSize: 0.06
    visible: size < 1

    contentItem: Rectangle {
        implicitWidth: 4
        radius: 2
        color: Theme.layer(root.pressed ? 0.5 : root.hovered ? 0.36 : 0.2)
    }
}
