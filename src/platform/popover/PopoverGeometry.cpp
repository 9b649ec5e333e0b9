#include "PopoverGeometry.h"

#include <algorithm>

namespace tarnwick {

namespace {
/// Between the popover and the edges of the screen.
constexpr int margin = 6;
/// Distance from the anchor to the popover where no panel's edge is known: half the height of a usual panel.
constexpr int itemDistance = 14;
/// The end of a panel that is not known: room for one of 40.
constexpr int unknownPanelMiddle = 40 - itemDistance;
/// The widest panel at a side of the screen.
constexpr int widestPanel = 64;

QRect inside(const QRect& available) {
    return available.marginsRemoved({margin, margin, margin, margin});
}
} // namespace

QPoint endOfPanel(const QRect& screen, const QRect& available) {
    const int above = available.top() - screen.top();
    const int below = screen.bottom() - available.bottom();
    const int left = available.left() - screen.left();
    const int right = screen.right() - available.right();
    const int thickest = std::max({above, below, left, right});
    if (thickest == above)
        return screen.topRight() + QPoint(0, above == 0 ? unknownPanelMiddle : above / 2);
    return thickest == left ? screen.bottomLeft() : screen.bottomRight();
}

QSize largestPopover(const QRect& available) {
    return inside(available).size();
}

QRect popoverGeometry(QPoint anchor, QSize size, const QRect& available) {
    const QRect inner = inside(available);
    const QSize fitted = size.boundedTo(inner.size());
    const int toSide = std::min(anchor.x() - available.left(), available.right() - anchor.x());
    const int toEnd = std::min(anchor.y() - available.top(), available.bottom() - anchor.y());
    // Below zero the anchor is in a panel that the screen's free part leaves out.
    const bool isBeside = toSide < 0 ? toEnd >= 0 : toSide <= widestPanel && toEnd > widestPanel;
    const auto besides = [](int item, int length, bool isFirstHalf) {
        return isFirstHalf ? item + itemDistance : item - itemDistance - length;
    };
    QPoint corner(anchor.x() - fitted.width() / 2, anchor.y() - fitted.height() / 2);
    if (isBeside)
        corner.setX(besides(anchor.x(), fitted.width(), anchor.x() <= available.center().x()));
    else
        corner.setY(besides(anchor.y(), fitted.height(), anchor.y() <= available.center().y()));
    return {QPoint(std::clamp(corner.x(), inner.left(), inner.right() + 1 - fitted.width()),
                   std::clamp(corner.y(), inner.top(), inner.bottom() + 1 - fitted.height())),
            fitted};
}

} // namespace tarnwick
