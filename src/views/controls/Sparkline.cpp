#include "Sparkline.h"

#include <QPainter>
#include <QPolygonF>
#include <QtMath>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarnwick {

namespace {
constexpr qreal strokeWidth = 1.5;
constexpr qreal areaOpacity = 0.14;
} // namespace

void Sparkline::setTrend(const TrendContent& trend) {
    if (trend_ == trend)
        return;
    trend_ = trend;
    update();
    Q_EMIT trendChanged();
}

void Sparkline::setColor(const QColor& color) {
    if (color_ == color)
        return;
    color_ = color;
    update();
    Q_EMIT colorChanged();
}

void Sparkline::setBarColors(const QList<QColor>& colors) {
    if (barColors_ == colors)
        return;
    barColors_ = colors;
    update();
    Q_EMIT barColorsChanged();
}

void Sparkline::paint(QPainter* painter) {
    painter->setRenderHint(QPainter::Antialiasing, !trend_.isStepped);
    if (trend_.isStepped)
        paintBars(*painter);
    else
        paintLine(*painter);
}

QPointF Sparkline::place(QPointF point) const {
    constexpr qreal inset = strokeWidth / 2;
    return {inset + point.x() * (width() - strokeWidth), height() - inset - point.y() * (height() - strokeWidth)};
}

void Sparkline::paintLine(QPainter& pen) const {
    QColor areaColor = color_;
    areaColor.setAlphaF(color_.alphaF() * static_cast<float>(areaOpacity));
    const auto draw = [&](QPolygonF line) {
        if (line.isEmpty())
            return;
        if (line.size() == 1)
            line << line.first(); // a lone result is a dot
        QPolygonF area = line;
        area << QPointF(line.last().x(), height()) << QPointF(line.first().x(), height());
        pen.setPen(Qt::NoPen);
        pen.setBrush(areaColor);
        pen.drawPolygon(area);
        pen.setPen(QPen(color_, strokeWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        pen.drawPolyline(line);
    };
    QPolygonF line;
    for (const QPointF& point : trend_.points)
        if (qIsNaN(point.y()))
            draw(std::exchange(line, {}));
        else
            line << place(point);
    draw(line);
}

void Sparkline::paintBars(QPainter& pen) const {
    for (qsizetype i = 0; i + 1 < trend_.points.size(); ++i) {
        const QPointF& from = trend_.points.at(i);
        const auto level = qRound(from.y() * 4) - 1;
        if (level < 0 || level >= barColors_.size())
            continue;
        const qreal left = std::floor(from.x() * width());
        const qreal right = std::max(left + 1, std::floor(trend_.points.at(i + 1).x() * width()));
        const qreal top = std::round(height() * (1 - from.y()));
        pen.fillRect(QRectF(left, top, right - left, height() - top), barColors_.at(level));
    }
}

} // namespace tarnwick
