#include "PopoverGeometry.h"

#include <algorithm>

namespace tarnwick {

namespace {
/// Between the popover and the edges of the screen.
constexpr int margin = 6;
/// Distance from the anchor to the popover where no panel's edge is known: half the height of a usual panel.
constexpr int itemDistance = 14;
} // namespace

QRect popoverGeometry(QPoint anchor, QSize size, const QRect& available) {
    const QRect inner = available.marginsRemoved({margin, margin, margin, margin});
    const QSize fitted = size.boundedTo(inner.size());
    const int left = std::clamp(anchor.x() - fitted.width() / 2, inner.left(), inner.right() + 1 - fitted.width());
    const int below = anchor.y() + itemDistance;
    const int above = anchor.y() - itemDistance - fitted.height();
    const bool upperHalf = anchor.y() <= available.center().y();
    const int top = std::clamp(upperHalf ? below : above, inner.top(), inner.bottom() + 1 - fitted.height());
    return {QPoint(left, top), fitted};
}

} // namespace tarnwick
