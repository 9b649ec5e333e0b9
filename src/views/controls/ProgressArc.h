#pragma once

#include <QColor>
#include <QQuickPaintedItem>

namespace tarnwick {

/// The open ring of a progress indicator. `angle` turns it and keeps its edge smooth; rotating the item would not.
class ProgressArc : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    /// Degrees, clockwise.
    Q_PROPERTY(qreal angle READ angle WRITE setAngle NOTIFY angleChanged)

public:
    using QQuickPaintedItem::QQuickPaintedItem;

    [[nodiscard]] const QColor& color() const { return color_; }
    [[nodiscard]] qreal angle() const { return angle_; }
    void setColor(const QColor& color);
    void setAngle(qreal angle);
    void paint(QPainter* painter) override;

Q_SIGNALS:
    void colorChanged();
    void angleChanged();

private:
    QColor color_ = Qt::black;
    qreal angle_ = 0;
};

} // namespace tarnwick
