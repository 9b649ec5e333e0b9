#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

namespace tarnwick {

/// The point from which a popover hangs where nobody says where its status item is: the end of the panel that leaves
/// `available` of the `screen` free; without one, a place at the top right where the end of a panel would be.
[[nodiscard]] QPoint endOfPanel(const QRect& screen, const QRect& available);

/// The size of the largest popover that fits where windows may cover `available` of the screen.
[[nodiscard]] QSize largestPopover(const QRect& available);

/// The place of a popover of `size` that hangs from `anchor`, a point of its status item, where windows may cover
/// `available` of the screen. It is centred below the item, above it where the panel is at the bottom, or beside it at
/// a side of the screen, and is moved and shrunk to fit into `available`. All in device-independent pixels.
[[nodiscard]] QRect popoverGeometry(QPoint anchor, QSize size, const QRect& available);

} // namespace tarnwick
