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

const ContainerInfo* containerOf(const Server& server, const QString& id) {
    if (!server.metrics)
        return nullptr;
    const QList<ContainerInfo>& containers = server.metrics->containers;
    const auto found = std::ranges::find(containers, id, &ContainerInfo::id);
    return found == containers.cend() ? nullptr : &*found;
}

/// Shows the failure until the container is found in another state, or not at all.
void keepFailure(ServerStore& store, UIState& ui, const QUuid& serverId, const QString& containerId,
                 const QString& reason) {
    const auto state = [&store, serverId, containerId]() -> std::optional<QString> {
        const Server* const server = store.server(serverId);
        if (server && server->metrics && server->metrics->errorMessage)
            return std::nullopt; // it did not answer, which says nothing of its containers
        const ContainerInfo* const container = server ? containerOf(*server, containerId) : nullptr;
        return container ? container->state : QString();
    };
    ui.setContainerFailure(serverId, containerId, reason);
    auto* const watch = new QObject(&ui);
    const auto look = [&ui, watch, serverId, containerId, state, before = state(), reason] {
        const bool isShown = ui.containerMarks(serverId).failures.value(containerId) == reason;
        const std::optional<QString> now = state();
        if (isShown && (!now || !before || now->compare(*before, Qt::CaseInsensitive) == 0))
            return;
        if (isShown)
            ui.setContainerFailure(serverId, containerId, std::nullopt);
        watch->deleteLater();
    };
    QObject::connect(&store, &ServerStore::serverChanged, watch, look);
    QObject::connect(&store, &ServerStore::serversChanged, watch, look);
}

/// The UI state owns the wait, since it outlives every view.
void followAction(const QFuture<std::optional<QString>>& changed, QPointer<ServerStore> store, UIState& ui,
                  const Server& server, const QString& containerId) {
    const auto finish = [&ui] {
        ui.setRestartingContainerId(std::nullopt);
    };
    using Failure = std::optional<QString>;
    const auto follow = [store = std::move(store), &ui, server, containerId, finish](const QFuture<Failure>& ended) {
        if (!store || ended.resultCount() == 0)
            return finish();
        if (const Failure failure = ended.result()) {
            keepFailure(*store, ui, server.id, containerId, *failure);
            return finish();
        }
        whenFinished<void>(store->refreshServer(server), ui, [finish](const QFuture<void>&) { finish(); });
    };
    whenFinished<Failure>(changed, ui, follow);
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
    : QObject(parent), store_(store), ui_(ui), collaborators_(collaborators), unlisted_(std::move(unlisted)) {
    connect(&store, &ServerStore::serverChanged, this, &CardActions::dropOldQuestion);
    connect(&store, &ServerStore::serversChanged, this, &CardActions::dropOldQuestion);
}

CardActions::~CardActions() {
    cancelStop();
}

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
    if (const ContainerInfo* const container = shown ? containerOf(*shown, containerId) : nullptr)
        collaborators_.openDockerContainer(*shown, *container);
}

void CardActions::openLog(const QUuid& serverId, const QString& containerId) {
    const auto shown = server(serverId);
    if (const ContainerInfo* const container = shown ? containerOf(*shown, containerId) : nullptr)
        collaborators_.openContainerLog(*shown, *container);
}

void CardActions::restart(const QUuid& serverId, const QString& containerId) {
    change(serverId, containerId, ContainerAction::restart);
}

void CardActions::stop(const QUuid& serverId, const QString& containerId) {
    change(serverId, containerId, ContainerAction::stop);
}

void CardActions::cancelStop() {
    ui_.setAskedContainer(std::nullopt);
}

void CardActions::change(const QUuid& serverId, const QString& containerId, ContainerAction action) {
    cancelStop();
    const auto shown = server(serverId);
    if (!shown || ui_.restartingContainerId())
        return;
    ui_.setContainerFailure(serverId, containerId, std::nullopt);
    ui_.setRestartingContainerId(containerId);
    followAction(collaborators_.changeContainer(*shown, containerId, action), &store_, ui_, *shown, containerId);
}

void CardActions::dropOldQuestion() {
    const auto asked = ui_.askedContainer();
    const auto shown = asked ? server(asked->first) : std::nullopt;
    if (!shown)
        return;
    const ContainerInfo* const container = containerOf(*shown, asked->second);
    if (!container || !container->canBeStopped())
        cancelStop();
}

QList<CardMenuEntry> CardActions::menu(const QUuid& serverId) const {
    const auto shown = server(serverId);
    return shown ? cardMenu(*shown, store_.servers(), collaborators_.computer.words()) : QList<CardMenuEntry>();
}

QList<CardMenuEntry> CardActions::containerMenu(const QUuid& serverId, const QString& containerId) const {
    const auto shown = server(serverId);
    const ContainerInfo* const container = shown ? containerOf(*shown, containerId) : nullptr;
    return container ? tarnwick::containerMenu(*container, ui_.restartingContainerId().has_value())
                     : QList<CardMenuEntry>();
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
    case CardCommand::startContainer:
        return change(serverId, entry.containerId, ContainerAction::start);
    case CardCommand::askToStopContainer:
        return ui_.setAskedContainer({{serverId, entry.containerId}});
    case CardCommand::restartContainer:
        return restart(serverId, entry.containerId);
    case CardCommand::openShell:
        return openShell(serverId, entry.containerId);
    case CardCommand::openLog:
        return openLog(serverId, entry.containerId);
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
