#pragma once

#include <QColor>
#include <QQuickPaintedItem>

namespace tarnwick {

/// The open ring of a progress indicator, standing still.
class ProgressArc : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)

public:
    using QQuickPaintedItem::QQuickPaintedItem;

    [[nodiscard]] const QColor& color() const { return color_; }
    void setColor(const QColor& color);
    void paint(QPainter* painter) override;

Q_SIGNALS:
    void colorChanged();

private:
    QColor color_ = Qt::black;
};

} // namespace tarnwick
