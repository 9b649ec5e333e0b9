#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

namespace tarnwick {

/// The place of a popover of `size` that hangs from `anchor`, a point of its status item, where windows may cover
/// `available` of the screen. It is centred below the item, or above it where the panel is at the bottom, and is moved
/// and shrunk to fit into `available`. All in device-independent pixels.
[[nodiscard]] QRect popoverGeometry(QPoint anchor, QSize size, const QRect& available);

} // namespace tarnwick
