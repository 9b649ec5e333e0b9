#include "ProgressArc.h"

#include <QPainter>

namespace tarnwick {

namespace {
constexpr qreal strokeWidth = 1.5;
constexpr int sixteenthsOfDegree = 16; // QPainter::drawArc()'s unit
constexpr int start = 120 * sixteenthsOfDegree;
constexpr int span = 280 * sixteenthsOfDegree;
} // namespace

void ProgressArc::setColor(const QColor& color) {
    if (color_ == color)
        return;
    color_ = color;
    update();
    Q_EMIT colorChanged();
}

void ProgressArc::setAngle(qreal angle) {
    if (qFuzzyCompare(angle_, angle))
        return;
    angle_ = angle;
    update();
    Q_EMIT angleChanged();
}

void ProgressArc::paint(QPainter* painter) {
    constexpr qreal inset = strokeWidth / 2 + 0.5;
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(color_, strokeWidth, Qt::SolidLine, Qt::RoundCap));
    painter->drawArc(QRectF(0, 0, width(), height()).adjusted(inset, inset, -inset, -inset),
                     start - qRound(angle_ * sixteenthsOfDegree), span);
}

} // namespace tarnwick
