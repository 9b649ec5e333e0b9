#include "Symbol.h"

#include "SymbolImage.h"

#include <QPixmapCache>
#include <QQuickWindow>
#include <QSGImageNode>

namespace tarnwick {

namespace {

/// The same few drawings stand on every card.
QImage drawing(const QString& name, int pixels, const QColor& color) {
    const QString key = name + u'/' + QString::number(pixels) + u'/' + QString::number(color.rgba(), 16);
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = QPixmap::fromImage(SymbolImage::render(name, pixels, color));
        QPixmapCache::insert(key, pixmap);
    }
    return pixmap.toImage();
}

} // namespace

Symbol::Symbol(QQuickItem* parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
    setImplicitSize(side_, side_);
}

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

void Symbol::setSide(qreal side) {
    if (qFuzzyCompare(side_, side))
        return;
    side_ = side;
    setImplicitSize(side, side);
    polish();
    Q_EMIT sideChanged();
}

void Symbol::itemChange(ItemChange change, const ItemChangeData& data) {
    if (change == ItemDevicePixelRatioHasChanged || change == ItemSceneChange)
        polish();
    QQuickItem::itemChange(change, data);
}

void Symbol::updatePolish() {
    const int pixels = window() ? qRound(side_ * window()->effectiveDevicePixelRatio()) : 0;
    image_ = name_.isEmpty() || pixels <= 0 ? QImage() : drawing(name_, pixels, color_);
    imageChanged_ = true;
    update();
}

QSGNode* Symbol::updatePaintNode(QSGNode* old, UpdatePaintNodeData* /*data*/) {
    if (image_.isNull()) {
        delete old;
        return nullptr;
    }
    auto* node = static_cast<QSGImageNode*>(old);
    if (!node) {
        node = window()->createImageNode();
        node->setOwnsTexture(true);
        node->setFiltering(QSGTexture::Linear);
        imageChanged_ = true;
    }
    if (imageChanged_)
        node->setTexture(window()->createTextureFromImage(image_));
    imageChanged_ = false;
    node->setRect((width() - side_) / 2, (height() - side_) / 2, side_, side_);
    return node;
}

} // namespace tarnwick
