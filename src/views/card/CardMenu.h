#pragma once

#include "MenuBarItem.h"
#include "Server.h"
#include "SystemWords.h"

#include <QList>
#include <QString>
#include <QtQmlIntegration>

#include <optional>

namespace tarnwick {

enum class CardCommand {
    none,
    showHardware,
    showPinMenu,
    moveUp,
    moveDown,
    openSSH,
    refresh,
    togglePause,
    remove,
    togglePin,
    assignPins,
    startContainer,
    askToStopContainer,
    restartContainer,
    openShell,
    openLog,
};

/// One line of a context menu, a card's or a container's, or of the pin submenu; a divider when it has no text.
struct CardMenuEntry {
    Q_GADGET
    QML_VALUE_TYPE(cardMenuEntry)
    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(bool isEnabled MEMBER isEnabled)
    Q_PROPERTY(bool isDestructive MEMBER isDestructive)
    Q_PROPERTY(bool isDivider READ isDivider)
    Q_PROPERTY(bool opensSubmenu READ opensSubmenu)
    Q_PROPERTY(bool canBeChosen READ canBeChosen)

public:
    QString text;
    QString symbol;
    CardCommand command = CardCommand::none;
    bool isEnabled = true;
    bool isDestructive = false;
    std::optional<MenuBarItem> pin = {}; ///< for togglePin
    MenuBarItemSet pins = {};            ///< for assignPins
    QString containerId = {};            ///< for what is done with a container

    [[nodiscard]] bool isDivider() const { return text.isEmpty(); }
    [[nodiscard]] bool canBeChosen() const { return isEnabled && !isDivider(); }
    [[nodiscard]] bool opensSubmenu() const { return command == CardCommand::showPinMenu; }
};

/// The context menu of a server's card. The first and the last id of `fleet` decide which moves are disabled.
[[nodiscard]] QList<CardMenuEntry> cardMenu(const Server& server, const QList<Server>& fleet, const SystemWords& words);
/// The context menu of a container's row. `isBusy`: an action on some container runs, so that no other can begin.
[[nodiscard]] QList<CardMenuEntry> containerMenu(const ContainerInfo& container, bool isBusy);
/// The pin submenu of the local card: a line to toggle each item, then the presets.
[[nodiscard]] QList<CardMenuEntry> pinMenu(const MenuBarItemSet& pinned, const SystemWords& words);

} // namespace tarnwick
