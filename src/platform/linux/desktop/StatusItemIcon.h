#pragma once

#include <QColor>
#include <QImage>
#include <QString>

namespace tarnwick {

/// A symbol for a panel whose colour is not known: drawn in `tint`, with a thin halo of the opposite lightness. The
/// halo cannot be seen on the panels that the tint is made for, and outlines the symbol on the others. ARGB32, square.
[[nodiscard]] QImage statusItemIcon(const QString& symbolName, int pixels, const QColor& tint);

/// The widest text of the same shape: a place that fits it fits whatever the digits become.
[[nodiscard]] inline QString statusTextGuide(QString text) {
    for (QChar& character : text)
        if (character.isDigit())
            character = u'0';
    return text;
}

} // namespace tarnwick
