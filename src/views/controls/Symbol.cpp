#include "Symbol.h"

#include "SymbolImage.h"

#include <QPixmapCache>

namespace tarnwick {

void Symbol::setName(const QString& name) {
    if (name_ == name)
        return;
    name_ = name;
    polish();
    Q_EMIT nameChanged();
}

void Symbol::setColor(const QColor& color) {
    if (color_ == color)
        return;
    color_ = color;
    polish();
    Q_EMIT colorChanged();
}

QImage Symbol::drawing(int pixels) const {
    if (name_.isEmpty())
        return {};
    // Views show the same few drawings many times.
    const QString key = name_ + u'/' + QString::number(pixels) + u'/' + QString::number(color_.rgba(), 16);
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = QPixmap::fromImage(SymbolImage::render(name_, pixels, color_));
        QPixmapCache::insert(key, pixmap);
    }
    return pixmap.toImage();
}

} // namespace tarnwick
