#include "ServerHealthStatus.h"

#include <array>

namespace tarnwick {

namespace {
struct Row {
    ServerHealthStatus status;
    QLatin1StringView rawValue;
    QLatin1StringView icon;
};
constexpr std::array rows{
    Row{ServerHealthStatus::healthy, QLatin1StringView("healthy"), QLatin1StringView("checkmark.circle.fill")},
    Row{ServerHealthStatus::warning, QLatin1StringView("warning"), QLatin1StringView("exclamationmark.triangle.fill")},
    Row{ServerHealthStatus::critical, QLatin1StringView("critical"), QLatin1StringView("xmark.octagon.fill")},
    Row{ServerHealthStatus::offline, QLatin1StringView("offline"), QLatin1StringView("slash.circle.fill")},
    Row{ServerHealthStatus::checking, QLatin1StringView("checking"), QLatin1StringView("arrow.triangle.2.circlepath")},
};
} // namespace

QLatin1StringView rawValue(ServerHealthStatus status) {
    return rows.at(static_cast<size_t>(status)).rawValue;
}

QLatin1StringView icon(ServerHealthStatus status) {
    return rows.at(static_cast<size_t>(status)).icon;
}

std::optional<ServerHealthStatus> serverHealthStatusFromRawValue(QStringView text) {
    for (const Row& row : rows)
        if (text == row.rawValue)
            return row.status;
    return std::nullopt;
}

} // namespace tarnwick
