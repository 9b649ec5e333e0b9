import QtQuick
import Tarnwick

/// Identity and health of a server; the card is dragged by it.
Item {
    id: root

    required property serverCardContent content
    required property cardWords words
    property bool isDragging: false
    /// Whether the drag has left the window. From then on it is one of the desktop's.
    property bool isOutside: false
    signal dragBegan
    /// The pointer, in scene coordinates.
    signal dragMoved(point position)
    signal dragLeft
    signal dragEnded

    function endDrag() {
        if (!isDragging)
            return;
        isDragging = false;
        isOutside = false;
        dragEnded();
    }

    readonly property real textX: 37

    implicitWidth: textX + Math.ceil(Math.max(name.implicitWidth + (paused.visible ? paused.width + 6 : 0),
                                              address.implicitWidth))
    Component.onDestruction: endDrag()

    Symbol {
        id: grip

        x: -2 // its lines begin below the bars' left end
        anchors.verticalCenter: parent.verticalCenter
        name: "line.3.horizontal"
        color: Theme.translucent(Theme.secondary, Theme.secondary.a * 0.5)
    }
    Rectangle {
        id: dot

        anchors.left: grip.right
        anchors.leftMargin: 7
        anchors.verticalCenter: parent.verticalCenter
        width: 8
        height: 8
        radius: 4
        color: Theme.color(root.content.dotRole)
    }
    PlainText {
        id: name

        x: root.textX
        y: Math.round((root.height - height - address.height) / 2)
        width: Math.min(implicitWidth, root.width - x - (paused.visible ? paused.width + 6 : 0))
        text: root.content.name
        size: 13
        font.weight: Font.DemiBold
    }
    Capsule {
        id: paused

        visible: !root.content.isEnabled
        anchors.left: name.right
        anchors.leftMargin: 6
        anchors.verticalCenter: name.verticalCenter
        implicitHeight: 14
        text: root.words.paused
        textSize: 9
        textWeight: Font.DemiBold
    }
    PlainText {
        id: address

        x: root.textX
        y: name.y + name.height
        width: Math.min(implicitWidth, root.width - x)
        text: root.content.address
        color: Theme.secondary
    }
    states: State {
        when: root.isDragging

        PropertyChanges {
            target: pointer
            cursorShape: Qt.ClosedHandCursor
        }
    }

    MouseArea {
        id: pointer

        property point pressedAt

        anchors.fill: parent
        hoverEnabled: true
        preventStealing: true
        cursorShape: Qt.OpenHandCursor
        onPressed: mouse => pressedAt = Qt.point(mouse.x, mouse.y)
        onPositionChanged: mouse => {
            if (!pressed)
                return;
            if (!root.isDragging) {
                const way = Math.abs(mouse.x - pressedAt.x) + Math.abs(mouse.y - pressedAt.y);
                if (way < Application.styleHints.startDragDistance)
                    return;
                root.isDragging = true;
                root.dragBegan();
            }
            const position = mapToItem(null, mouse.x, mouse.y);
            root.dragMoved(position);
            if (!root.isOutside && !Window.contentItem.contains(position)) {
                root.isOutside = true;
                root.dragLeft();
            }
        }
        onReleased: root.endDrag()
        onCanceled: root.endDrag()
    }
    HelpTip {
        readonly property bool isAtDot: Math.abs(pointer.mouseX - dot.x - dot.width / 2) < 9
                                        && root.content.healthTrend.text !== ""

        parent: isAtDot ? dot : root
        trend: root.content.healthTrend
        text: isAtDot ? trend.text : root.words.drag
        wanted: pointer.containsMouse && !pointer.pressed
    }
}
