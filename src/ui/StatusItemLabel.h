#pragma once

#include "AppSettings.h"
#include "Server.h"
#include "ThisComputer.h"

#include <QList>
#include <QString>

namespace tarnwick {

/// What the status item shows.
struct StatusItemLabel {
    QString symbolName;
    QString title; ///< a space and the parts, or empty for the icon alone
    friend bool operator==(const StatusItemLabel&, const StatusItemLabel&) = default;
};

/// The enabled servers and how many of them answered.
struct FleetCounts {
    qsizetype online = 0;
    qsizetype total = 0;
};

[[nodiscard]] FleetCounts fleetCounts(const QList<Server>& servers);
/// "0", "3 OK", "2/3 OK" or "ALL OFF".
[[nodiscard]] QString fleetSummary(FleetCounts counts);
/// Asks the computer only for what is pinned.
[[nodiscard]] StatusItemLabel composeStatusItemLabel(const QList<Server>& servers, const AppSettings& settings,
                                                     ThisComputer& computer);

} // namespace tarnwick
