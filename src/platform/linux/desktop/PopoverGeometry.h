#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

namespace tarnwick {

/// Where a popover of `size` goes that belongs to `anchor`, a point of its status item, on a screen that leaves
/// `available` to windows: centred below the item; above it where the panel is at the bottom; kept inside `available`,
/// and made smaller where it is larger than that. Device-independent pixels throughout.
[[nodiscard]] QRect popoverGeometry(QPoint anchor, QSize size, const QRect& available);

} // namespace tarnwick
