#include "StatusItemIcon.h"

#include "SymbolImage.h"

#include <QPainter>

#include <algorithm>

namespace tarnwick {

QImage statusItemIcon(const QString& symbolName, int pixels, const QColor& tint) {
    // One pixel at the usual sizes of panels; the symbol is drawn smaller by it.
    const int reach = std::max(1, pixels / 24);
    const int side = pixels - 2 * reach;
    const QColor opposite = tint.lightness() > 127 ? Qt::black : Qt::white;
    const QImage symbol = SymbolImage::render(symbolName, side, tint);
    const QImage shadow = SymbolImage::render(symbolName, side, opposite);

    QImage halo(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    halo.fill(Qt::transparent);
    QPainter haloPainter(&halo);
    for (int dy = -reach; dy <= reach; dy += reach)
        for (int dx = -reach; dx <= reach; dx += reach)
            haloPainter.drawImage(reach + dx, reach + dy, shadow);
    haloPainter.end();

    QImage icon(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    icon.fill(Qt::transparent);
    QPainter painter(&icon);
    painter.setOpacity(0.85);
    painter.drawImage(0, 0, halo);
    painter.setOpacity(1.0);
    painter.drawImage(reach, reach, symbol);
    painter.end();
    return icon.convertToFormat(QImage::Format_ARGB32);
}

} // namespace tarnwick
