#pragma once

#include <QColor>
#include <QImage>
#include <QString>

namespace tarnwick {

/// A symbol for a panel whose colour nobody tells: drawn in `tint`, with a thin halo of the opposite lightness that
/// vanishes on the panels the tint is made for and outlines the symbol on the others. ARGB32, square.
[[nodiscard]] QImage statusItemIcon(const QString& symbolName, int pixels, const QColor& tint);

} // namespace tarnwick
