#include "ServerDropDelegate.h"

namespace tarnwick {

void ServerDropDelegate::dropEntered() const {
    if (const std::optional<QUuid> dragged = ui.draggedServerId())
        store.moveServer(store.indexOf(*dragged), store.indexOf(targetServer.id));
}

bool ServerDropDelegate::performDrop() const {
    ui.setDraggedServerId(std::nullopt);
    store.save();
    return true;
}

} // namespace tarnwick
