pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Tarnwick

/// The hosts of the user's ssh configuration, to import one after another: with their buttons, or with the arrow keys
/// and Return or Space.
FocusScope {
    id: root

    required property AddServerModel server

    PlainText {
        id: guide

        width: parent.width
        text: root.server.words.importGuide
        color: Theme.secondary
    }
    Rectangle {
        id: frame

        anchors.top: guide.bottom
        anchors.topMargin: 8
        anchors.bottom: includes.visible ? includes.top : parent.bottom
        anchors.bottomMargin: includes.visible ? 8 : 0
        width: parent.width
        radius: Theme.radiusCard
        color: Theme.layer(0.03)

        Column {
            anchors.centerIn: parent
            width: parent.width - 24
            visible: list.count === 0
            spacing: 8

            Symbol {
                anchors.horizontalCenter: parent.horizontalCenter
                name: "doc.text.magnifyingglass"
                side: 32
                color: Theme.secondary
            }
            PlainText {
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                text: root.server.words.noHosts
                size: 12
                color: Theme.secondary
            }
        }
        ListView {
            id: list

            objectName: "hosts"
            anchors.fill: parent
            anchors.margins: 4
            visible: count > 0
            focus: true
            activeFocusOnTab: count > 0
            clip: true
            model: root.visible ? root.server.hosts : null // ssh is asked about what is shown
            reuseItems: true
            boundsBehavior: Flickable.StopAtBounds
            highlightMoveDuration: 0
            highlightResizeDuration: 0
            Accessible.role: Accessible.List
            Accessible.name: guide.text
            Keys.onReturnPressed: root.server.importHost(currentIndex)
            Keys.onEnterPressed: root.server.importHost(currentIndex)
            Keys.onSpacePressed: root.server.importHost(currentIndex)

            T.ScrollBar.vertical: ListScrollBar {
                id: bar
            }

            delegate: DetectedHostRow {
                width: list.width - (bar.visible ? bar.width : 0)
                words: root.server.words
                isLast: index === list.count - 1
                isCurrent: list.activeFocus && ListView.isCurrentItem
                onImportRequested: index => root.server.importHost(index)
                onAliasRequested: index => root.server.importAlias(index)
            }
        }
        ScrollFade {
            x: list.x
            y: list.y
            width: list.width - 8
            height: list.height
            area: list
            ground: Qt.tint(Theme.window, frame.color)
        }
    }
    PlainText {
        id: includes

        anchors.bottom: parent.bottom
        width: parent.width
        visible: text !== ""
        text: root.server.includeGuide
        size: 10
        color: Theme.secondary
    }
}
