#include "ServerDropDelegate.h"

#include <algorithm>

namespace tarnwick {

namespace {

qsizetype indexOf(const QList<Server>& servers, const QUuid& id) {
    const auto found = std::ranges::find(servers, id, &Server::id);
    return found == servers.cend() ? -1 : found - servers.cbegin();
}

} // namespace

void ServerDropDelegate::dropEntered() const {
    const std::optional<QUuid> dragged = ui.draggedServerId();
    if (!dragged)
        return;
    const qsizetype from = indexOf(store.servers(), *dragged);
    const qsizetype to = indexOf(store.servers(), targetServer.id);
    if (from >= 0 && to >= 0 && from != to)
        store.moveServer(from, to);
}

bool ServerDropDelegate::performDrop() const {
    ui.setDraggedServerId(std::nullopt);
    store.save();
    return true;
}

} // namespace tarnwick
