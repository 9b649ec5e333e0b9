#pragma once

#include <QImage>
#include <QQuickItem>
#include <QtQmlIntegration>

namespace tarnwick {

/// A drawing as wide as it is high, in the middle of the item, sharp at the window's device pixel ratio.
class SquareImage : public QQuickItem {
    Q_OBJECT
    QML_ANONYMOUS
    /// Side of the drawing; also the implicit size. At 16 and its multiples the symbols' lines are whole pixels.
    Q_PROPERTY(qreal side READ side WRITE setSide NOTIFY sideChanged)

public:
    explicit SquareImage(QQuickItem* parent = nullptr);

    [[nodiscard]] qreal side() const { return side_; }
    void setSide(qreal side);

Q_SIGNALS:
    void sideChanged();

protected:
    /// The drawing on a square of that many device pixels; a null image for none.
    [[nodiscard]] virtual QImage drawing(int pixels) const = 0;

    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void updatePolish() override;
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override;

private:
    qreal side_ = 16;
    QImage image_;
    bool imageChanged_ = false;
};

} // namespace tarnwick
