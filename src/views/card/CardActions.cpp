#include "CardActions.h"

#include "ServerDropDelegate.h"

#include <QDrag>
#include <QFutureWatcher>
#include <QGuiApplication>
#include <QMimeData>
#include <QPointer>

#include <algorithm>
#include <functional>
#include <utility>

namespace tarnwick {

namespace {

/// Calls `done` with the future once it has finished, unless `owner` is destroyed before that.
template <typename Result>
void whenFinished(const QFuture<Result>& future, QObject& owner, std::function<void(const QFuture<Result>&)> done) {
    auto* watcher = new QFutureWatcher<Result>(&owner);
    QObject::connect(watcher, &QFutureWatcherBase::finished, &owner, [watcher, done = std::move(done)] {
        watcher->deleteLater();
        done(watcher->future());
    });
    watcher->setFuture(future);
}

/// The UI state owns the wait, since it outlives every view.
void followRestart(const QFuture<bool>& restarted, QPointer<ServerStore> store, UIState& ui, const Server& server) {
    const auto finish = [&ui] {
        ui.setRestartingContainerId(std::nullopt);
    };
    whenFinished<bool>(restarted, ui, [store = std::move(store), &ui, server, finish](const QFuture<bool>& ended) {
        const bool succeeded = ended.resultCount() > 0 && ended.result();
        if (succeeded && store)
            whenFinished<void>(store->refreshServer(server), ui, [finish](const QFuture<void>&) { finish(); });
        else
            finish();
    });
}

/// What a dragged card offers.
QString idText(const QUuid& serverId) {
    return serverId.toString(QUuid::WithoutBraces).toUpper();
}

/// Returns after the drop.
void dragText(const QString& text) {
    auto* const drag = new QDrag(qGuiApp); // not of the window, which may be closed meanwhile
    auto* const data = new QMimeData;
    data->setText(text);
    drag->setMimeData(data);
    drag->exec(Qt::MoveAction | Qt::CopyAction, Qt::MoveAction);
}

} // namespace

CardActions::CardActions(ServerStore& store, UIState& ui, const ViewCollaborators& collaborators,
                         std::optional<Server> unlisted, QObject* parent)
    : QObject(parent), store_(store), ui_(ui), collaborators_(collaborators), unlisted_(std::move(unlisted)) {}

std::optional<Server> CardActions::server(const QUuid& id) const {
    if (const Server* listed = store_.server(id))
        return *listed;
    return unlisted_ && unlisted_->id == id ? unlisted_ : std::nullopt;
}

void CardActions::togglePause(const QUuid& serverId) {
    if (std::optional<Server> changed = server(serverId)) {
        changed->isEnabled = !changed->isEnabled;
        store_.updateServer(*changed);
    }
}

void CardActions::remove(const QUuid& serverId) {
    store_.removeServer(serverId);
}

void CardActions::refresh(const QUuid& serverId) {
    if (const auto shown = server(serverId))
        store_.refreshServer(*shown);
}

void CardActions::openSSH(const QUuid& serverId) {
    if (const auto shown = server(serverId))
        collaborators_.openServerSSH(*shown);
}

void CardActions::toggleExpanded(const QUuid& serverId) {
    ui_.toggleExpanded(serverId);
}

void CardActions::showHardware() {
    ui_.setShowingMacInfoSheet(true);
}

void CardActions::openShell(const QUuid& serverId, const QString& containerId) {
    const auto shown = server(serverId);
    if (!shown || !shown->metrics)
        return;
    const QList<ContainerInfo>& containers = shown->metrics->containers;
    const auto container = std::ranges::find(containers, containerId, &ContainerInfo::id);
    if (container != containers.cend())
        collaborators_.openDockerContainer(*shown, *container);
}

void CardActions::restart(const QUuid& serverId, const QString& containerId) {
    const auto shown = server(serverId);
    if (!shown || ui_.restartingContainerId())
        return;
    ui_.setRestartingContainerId(containerId);
    followRestart(collaborators_.restartContainer(*shown, containerId), &store_, ui_, *shown);
}

QList<CardMenuEntry> CardActions::menu(const QUuid& serverId) const {
    const auto shown = server(serverId);
    return shown ? cardMenu(*shown, store_.servers(), collaborators_.computer.words()) : QList<CardMenuEntry>();
}

QList<CardMenuEntry> CardActions::pinMenu() const {
    return tarnwick::pinMenu(store_.settings().pinnedMenuBarItems, collaborators_.computer.words());
}

void CardActions::choose(const QUuid& serverId, const CardMenuEntry& entry) {
    switch (entry.command) {
    case CardCommand::none:
    case CardCommand::showPinMenu:
        return;
    case CardCommand::showHardware:
        return showHardware();
    case CardCommand::moveUp:
        return store_.moveServerUp(serverId);
    case CardCommand::moveDown:
        return store_.moveServerDown(serverId);
    case CardCommand::openSSH:
        return openSSH(serverId);
    case CardCommand::refresh:
        return refresh(serverId);
    case CardCommand::togglePause:
        return togglePause(serverId);
    case CardCommand::remove:
        return remove(serverId);
    case CardCommand::togglePin:
        return store_.editSettings([&entry](AppSettings& settings) { settings.togglePinned(*entry.pin); });
    case CardCommand::assignPins:
        return store_.editSettings([&entry](AppSettings& settings) { settings.pinnedMenuBarItems = entry.pins; });
    }
}

void CardActions::beginDrag(const QUuid& serverId) {
    ui_.setDraggedServerId(serverId);
}

void CardActions::dragEntered(const QUuid& targetId) {
    if (const auto target = server(targetId))
        ServerDropDelegate{*target, store_, ui_}.dropEntered();
}

void CardActions::dragOut() {
    const auto dragged = ui_.draggedServerId();
    if (!dragged)
        return;
    // Not within the handling of the mouse's move, which belongs to a window that may be gone after the drag.
    const auto carry = [self = QPointer(this), text = idText(*dragged)] {
        dragText(text);
        if (self)
            self->endDrag();
    };
    QMetaObject::invokeMethod(qGuiApp, carry, Qt::QueuedConnection);
}

bool CardActions::accepts(const QString& text) const {
    return ui_.draggedServerId() && text == idText(*ui_.draggedServerId());
}

void CardActions::endDrag() {
    if (ui_.draggedServerId())
        ServerDropDelegate{{}, store_, ui_}.performDrop();
}

} // namespace tarnwick
