pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick

/// The popover: head, cards or the prompt to add the first one, foot, and the sheets over them.
Rectangle {
    id: root

    required property PopoverModel popover
    required property UIState ui
    property bool rounded: true
    /// The greatest height that the screen has room for.
    property real longest: Infinity

    readonly property bool showsCards: !popover.content.isEmpty || cards.isRemoving
    /// The topmost sheet. The page keeps its own size while it is hidden by one.
    readonly property Item sheet: tour.shown ?? macInfo.shown ?? settings.shown ?? addServer.shown

    implicitWidth: sheet?.implicitWidth ?? page.width
    implicitHeight: sheet?.implicitHeight ?? page.implicitHeight
    width: implicitWidth
    height: Math.min(implicitHeight, longest)
    radius: rounded ? Theme.radiusWindow : 0
    color: Theme.window
    // What is typed while a card or a button has the keyboard is looked for, too.
    Keys.forwardTo: [finder.field]
    onActiveFocusChanged: {
        if (activeFocus)
            finder.field.forceActiveFocus();
    }
    Keys.onEscapePressed: popover.close()

    Binding {
        target: Theme
        property: "roundsWindows"
        value: root.rounded
    }
    Column {
        id: page

        width: 400
        visible: !root.sheet

        PopoverHeader {
            id: header

            width: parent.width
            popover: root.popover
            ui: root.ui
            radius: root.radius
        }
        Divider {
            width: parent.width
        }
        Item {
            visible: root.popover.content.isOffline
            width: parent.width
            height: 28 // the list begins with a margin of its own

            SymbolLabel {
                y: 12
                width: parent.width
                height: 16
                text: root.popover.words.offline
                symbol: "network"
                symbolSize: 14
                spacing: 6
                tint: Theme.secondary
            }
        }
        FinderBar {
            id: finder

            width: parent.width
            popover: root.popover
            onSteppedDown: cards.enter()
            onPassed: forward => root.nextItemInFocusChain(forward).forceActiveFocus(forward ? Qt.TabFocusReason
                                                                                             : Qt.BacktabFocusReason)
        }
        ServerList {
            id: cards

            visible: root.showsCards
            width: parent.width
            longest: Math.min(520, root.longest - header.height - footer.height - 2)
            popover: root.popover
            taken: finder.height
            onLeftAbove: finder.field.forceActiveFocus()
        }
        EmptyState {
            visible: !root.showsCards
            width: parent.width
            words: root.popover.words
            onAddRequested: root.ui.showingAddServer = true
        }
        Divider {
            width: parent.width
        }
        PopoverFooter {
            id: footer

            width: parent.width
            popover: root.popover
            radius: root.radius
        }
    }
    Rectangle {
        anchors.fill: parent
        radius: root.radius
        color: "transparent"
        border.color: Theme.windowEdge
    }

    SheetHost {
        id: addServer

        presented: root.ui.showingAddServer
        radius: root.radius
        longest: root.longest
        onDismissed: root.ui.showingAddServer = false
        sheet: Component {
            AddServerSheet {
                id: addServerSheet

                server: root.popover.addServerModel(addServerSheet)
                onDismissed: root.ui.showingAddServer = false
            }
        }
    }
    SheetHost {
        id: settings

        presented: root.ui.showingSettings
        radius: root.radius
        longest: root.longest
        onDismissed: root.ui.showingSettings = false
        sheet: Component {
            SettingsView {
                id: settingsSheet

                settings: root.popover.settingsModel(settingsSheet)
                onDismissed: root.ui.showingSettings = false
            }
        }
    }
    SheetHost {
        id: macInfo

        presented: root.ui.showingMacInfoSheet
        radius: root.radius
        longest: root.longest
        onDismissed: root.ui.showingMacInfoSheet = false
        sheet: Component {
            MacInfoSheet {
                id: macInfoSheet

                mac: root.popover.macInfoModel(macInfoSheet)
                topRadius: root.radius
                onDismissed: root.ui.showingMacInfoSheet = false
            }
        }
    }
    SheetHost {
        id: tour

        presented: root.ui.showingOnboarding
        radius: root.radius
        longest: root.longest
        onDismissed: root.ui.showingOnboarding = false
        sheet: Component {
            OnboardingView {
                id: tourSheet

                tour: root.popover.onboardingModel(tourSheet)
                radius: root.radius
                onCompleted: root.ui.showingOnboarding = false
            }
        }
    }
}
