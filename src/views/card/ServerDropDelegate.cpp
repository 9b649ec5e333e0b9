#include "ServerDropDelegate.h"

namespace tarnwick {

void ServerDropDelegate::dropEntered() const {
    const std::optional<QUuid> dragged = ui.draggedServerId();
    if (!dragged)
        return;
    const qsizetype from = store.indexOf(*dragged);
    const qsizetype to = store.indexOf(targetServer.id);
    if (from >= 0 && to >= 0 && from != to)
        store.moveServer(from, to);
}

bool ServerDropDelegate::performDrop() const {
    ui.setDraggedServerId(std::nullopt);
    store.save();
    return true;
}

} // namespace tarnwick
