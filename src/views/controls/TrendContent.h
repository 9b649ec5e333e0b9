#pragma once

#include "ServerTrend.h"

#include <QList>
#include <QLocale>
#include <QPointF>
#include <QString>
#include <QtQmlIntegration>

namespace tarnwick {

/// A chart of what a figure has been, and what it says in words. Both are empty while there is nothing to compare.
struct TrendContent {
    Q_GADGET
    QML_VALUE_TYPE(trendContent)
    Q_PROPERTY(QList<QPointF> points MEMBER points)
    Q_PROPERTY(bool isStepped MEMBER isStepped)
    Q_PROPERTY(QString text MEMBER text)

public:
    /// x from 0, the oldest, to 1, the latest; y from 0 to 1, and NaN where the line breaks.
    QList<QPointF> points = {};
    /// Each height holds until the next point, and stands for a health verdict: 0.25 healthy to 1 offline.
    bool isStepped = false;
    QString text = {};

    friend bool operator==(const TrendContent&, const TrendContent&) = default;
};

/// Percent on a scale of 0 to 100, latency on one up to its highest.
[[nodiscard]] TrendContent figureTrend(const ServerTrend* trend, TrendFigure figure);
/// Since when the server has been as it is, and the three latest times when it was not well, in local time.
[[nodiscard]] TrendContent healthTrend(const ServerTrend* trend, const QLocale& locale);

} // namespace tarnwick
