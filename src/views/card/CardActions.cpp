#include "CardActions.h"

#include "ServerDropDelegate.h"

#include <QPointer>

#include <utility>

namespace tarnwick {

namespace {

/// The restart belongs to the UI state, which outlives every view.
void followRestart(const QFuture<bool>& restarted, QPointer<ServerStore> store, UIState& ui, const Server& server) {
    const auto finish = [&ui] {
        ui.setRestartingContainerId(std::nullopt);
    };
    QFuture<bool>(restarted)
        .then(&ui,
              [store = std::move(store), &ui, server, finish](bool succeeded) {
                  if (succeeded && store)
                      store->refreshServer(server).then(&ui, finish).onCanceled(&ui, finish);
                  else
                      finish();
              })
        .onCanceled(&ui, finish);
}

} // namespace

CardActions::CardActions(ServerStore& store, UIState& ui, ViewCollaborators collaborators, QObject* parent)
    : QObject(parent), store_(store), ui_(ui), collaborators_(std::move(collaborators)) {}

void CardActions::togglePause(const ServerCardContent& card) {
    Server changed = card.server;
    changed.isEnabled = !changed.isEnabled;
    store_.updateServer(changed);
}

void CardActions::remove(const ServerCardContent& card) {
    store_.removeServer(card.server.id);
}

void CardActions::refresh(const ServerCardContent& card) {
    store_.refreshServer(card.server);
}

void CardActions::openSSH(const ServerCardContent& card) {
    collaborators_.openServerSSH(card.server);
}

void CardActions::toggleExpanded(const ServerCardContent& card) {
    ui_.toggleExpanded(card.server.id);
}

void CardActions::showHardware() {
    ui_.setShowingMacInfoSheet(true);
}

void CardActions::openShell(const ServerCardContent& card, const ContainerRowContent& row) {
    collaborators_.openDockerContainer(card.server, row.container);
}

void CardActions::restart(const ServerCardContent& card, const ContainerRowContent& row) {
    if (ui_.restartingContainerId())
        return;
    ui_.setRestartingContainerId(row.container.id);
    followRestart(collaborators_.restartContainer(card.server, row.container.id), &store_, ui_, card.server);
}

QList<CardMenuEntry> CardActions::menu(const ServerCardContent& card) const {
    return cardMenu(card.server, store_.servers());
}

QList<CardMenuEntry> CardActions::pinMenu() const {
    return tarnwick::pinMenu(store_.settings().pinnedMenuBarItems);
}

void CardActions::choose(const ServerCardContent& card, const CardMenuEntry& entry) {
    switch (entry.command) {
    case CardCommand::none:
    case CardCommand::showPinMenu:
        return;
    case CardCommand::showHardware:
        return showHardware();
    case CardCommand::moveUp:
        return store_.moveServerUp(card.server.id);
    case CardCommand::moveDown:
        return store_.moveServerDown(card.server.id);
    case CardCommand::openSSH:
        return openSSH(card);
    case CardCommand::refresh:
        return refresh(card);
    case CardCommand::togglePause:
        return togglePause(card);
    case CardCommand::remove:
        return remove(card);
    case CardCommand::togglePin:
        return store_.editSettings([&entry](AppSettings& settings) { settings.togglePinned(*entry.pin); });
    case CardCommand::assignPins:
        return store_.editSettings([&entry](AppSettings& settings) { settings.pinnedMenuBarItems = entry.pins; });
    }
}

void CardActions::beginDrag(const ServerCardContent& card) {
    ui_.setDraggedServerId(card.server.id);
}

void CardActions::dragEntered(const ServerCardContent& target) {
    ServerDropDelegate{target.server, store_, ui_}.dropEntered();
}

void CardActions::endDrag() {
    if (ui_.draggedServerId())
        ServerDropDelegate{{}, store_, ui_}.performDrop();
}

} // namespace tarnwick
