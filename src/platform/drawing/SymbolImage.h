#pragma once

#include <QColor>
#include <QImage>
#include <QString>
#include <QStringList>

namespace tarnwick {

/// Our own symbols: one SVG drawing per symbol name on one 24-unit grid, tinted when drawn. Any thread.
namespace SymbolImage {

/// The symbol drawn in one colour on a transparent square of `pixels` × `pixels` device pixels
/// (ARGB32_Premultiplied). An unknown name gives a transparent square.
[[nodiscard]] QImage render(const QString& symbolName, int pixels, const QColor& tint);
/// The application's own icon, in its own colours. A null image where there is none.
[[nodiscard]] QImage applicationIcon(int pixels);
/// The names of all symbols, sorted.
[[nodiscard]] QStringList names();

} // namespace SymbolImage

} // namespace tarnwick
