#include "SquareImage.h"

#include <QQuickWindow>
#include <QSGImageNode>

namespace tarnwick {

SquareImage::SquareImage(QQuickItem* parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
    setImplicitSize(side_, side_);
}

void SquareImage::setSide(qreal side) {
    if (qFuzzyCompare(side_, side))
        return;
    side_ = side;
    setImplicitSize(side, side);
    polish();
    Q_EMIT sideChanged();
}

void SquareImage::itemChange(ItemChange change, const ItemChangeData& data) {
    if (change == ItemDevicePixelRatioHasChanged || change == ItemSceneChange)
        polish();
    QQuickItem::itemChange(change, data);
}

void SquareImage::updatePolish() {
    const int pixels = window() ? qRound(side_ * window()->effectiveDevicePixelRatio()) : 0;
    image_ = pixels > 0 ? drawing(pixels) : QImage();
    imageChanged_ = true;
    update();
}

QSGNode* SquareImage::updatePaintNode(QSGNode* old, UpdatePaintNodeData* /*data*/) {
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
