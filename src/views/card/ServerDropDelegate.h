#pragma once

#include "Server.h"
#include "ServerStore.h"
#include "UIState.h"

#include <Qt>

namespace tarnwick {

/// What a card does while another one is dragged over it: the fleet reorders live, and the drop saves the order.
/// Main thread.
struct ServerDropDelegate {
    Server targetServer; ///< of the card that receives the drop
    ServerStore& store;
    UIState& ui;

    /// The drag entered the card: the dragged entry takes the target's place. Saves nothing.
    void dropEntered() const;
    [[nodiscard]] Qt::DropAction dropUpdated() const { return Qt::MoveAction; }
    /// Ends the drag and saves.
    bool performDrop() const;
    void dropExited() const {}
};

} // namespace tarnwick
