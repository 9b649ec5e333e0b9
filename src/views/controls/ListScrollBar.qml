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

    // At an end the wheel's movement goes on unseen, and a press would do no more than stop it.
    function stopAtEnd() {
        const area = parent as Flickable;
        if (area.dragging || !area.moving || !(area.atYBeginning || area.atYEnd))
            return;
        area.cancelFlick();
        area.contentY = area.atYBeginning ? area.originY - area.topMargin
                                          : area.originY + area.contentHeight + area.bottomMargin - area.height;
    }

    contentItem: Rectangle {
        implicitWidth: 4
        radius: 2
        color: Theme.layer(root.pressed ? 0.5 : root.hovered ? 0.36 : 0.2)
    }

    Connections {
        target: root.parent as Flickable

        function onAtYBeginningChanged() {
            root.stopAtEnd();
        }
        function onAtYEndChanged() {
            root.stopAtEnd();
        }
    }
}
