#pragma once

#include "controls/ColorRole.h"
#include "controls/TrendContent.h"

#include <QString>
#include <QtQmlIntegration>

namespace tarnwick {

/// What one labelled percentage bar shows.
struct MetricBarContent {
    Q_GADGET
    QML_VALUE_TYPE(metricBarContent)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString detail MEMBER detail)
    Q_PROPERTY(double fraction MEMBER fraction)
    Q_PROPERTY(tarnwick::ColorRole::Role fillRole MEMBER fillRole)
    Q_PROPERTY(tarnwick::TrendContent trend MEMBER trend)

public:
    QString label;
    QString detail;
    double fraction = 0; ///< filled share of the track, 0 to 1
    ColorRole::Role fillRole = ColorRole::Role::Blue;
    TrendContent trend; ///< empty for figures that are not kept

    friend bool operator==(const MetricBarContent&, const MetricBarContent&) = default;
};

/// `percent` is expected in 0 to 100. Beyond that the fill is clamped to the track; the colour uses the value as given.
[[nodiscard]] MetricBarContent metricBarContent(const QString& label, double percent, const QString& detail,
                                                const TrendContent& trend = {});

} // namespace tarnwick
