#pragma once

#include "AppSettings.h"
#include "Server.h"
#include "ThermalSurvey.h"

#include <QList>
#include <QString>

#include <functional>

namespace tarnwick {

/// The status item's face, composed.
struct StatusItemLabel {
    QString symbolName;
    QString title; ///< a space and the parts, or empty for the icon alone
    friend bool operator==(const StatusItemLabel&, const StatusItemLabel&) = default;
};

/// Load readings in percent, each called only when its item is pinned.
struct LoadReadings {
    std::function<double()> cpu;
    std::function<double()> gpu;
    std::function<double()> ram;
};

/// The enabled servers and how many of them answered.
struct FleetCounts {
    qsizetype online = 0;
    qsizetype total = 0;
};

[[nodiscard]] FleetCounts fleetCounts(const QList<Server>& servers);
/// "0", "3 OK", "2/3 OK" or "ALL OFF".
[[nodiscard]] QString fleetSummary(FleetCounts counts);
[[nodiscard]] StatusItemLabel composeStatusItemLabel(const QList<Server>& servers, const AppSettings& settings,
                                                     const ThermalSummary& thermals, const LoadReadings& loads);

} // namespace tarnwick
