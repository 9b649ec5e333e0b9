#pragma once

#include "TrendContent.h"

#include <QColor>
#include <QQuickPaintedItem>

namespace tarnwick {

/// A small chart without axes: a line over a faint area, or bars whose height and colour stand for health verdicts.
class Sparkline : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tarnwick::TrendContent trend READ trend WRITE setTrend NOTIFY trendChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    /// Of the bars, from healthy to offline.
    Q_PROPERTY(QList<QColor> barColors READ barColors WRITE setBarColors NOTIFY barColorsChanged)

public:
    using QQuickPaintedItem::QQuickPaintedItem;

    [[nodiscard]] const TrendContent& trend() const { return trend_; }
    [[nodiscard]] const QColor& color() const { return color_; }
    [[nodiscard]] const QList<QColor>& barColors() const { return barColors_; }
    void setTrend(const TrendContent& trend);
    void setColor(const QColor& color);
    void setBarColors(const QList<QColor>& colors);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void trendChanged();
    void colorChanged();
    void barColorsChanged();

private:
    void paintLine(QPainter& pen) const;
    void paintBars(QPainter& pen) const;
    [[nodiscard]] QPointF place(QPointF point) const;

    TrendContent trend_;
    QColor color_ = Qt::black;
    QList<QColor> barColors_;
};

} // namespace tarnwick
