#pragma once

#include "Server.h"
#include "ServerStore.h"
#include "UIState.h"

#include <Qt>

namespace tarnwick {

/// What a card does while another one is dragged over it: the fleet is reordered at once, and the drop saves the order.
/// Main thread.
struct ServerDropDelegate {
    Server targetServer; ///< the server of the card that receives the drop
    ServerStore& store;
    UIState& ui;

    /// Moves the dragged entry to the target's place in the fleet. Does not save.
    void dropEntered() const;
    [[nodiscard]] Qt::DropAction dropUpdated() const { return Qt::MoveAction; }
    /// Ends the drag and saves.
    bool performDrop() const;
    void dropExited() const {}
};

} // namespace tarnwick
