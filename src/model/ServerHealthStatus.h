#pragma once

#include <QLatin1StringView>
#include <QStringView>

#include <optional>

namespace tarnwick {

/// The verdict on one server, derived from its latest metrics (ServerMetrics::status()). Never stored.
enum class ServerHealthStatus { healthy, warning, critical, offline, checking };

/// The status's own word: "healthy", "warning", "critical", "offline" or "checking".
[[nodiscard]] QLatin1StringView rawValue(ServerHealthStatus status);
/// The name of the symbol of the status.
[[nodiscard]] QLatin1StringView icon(ServerHealthStatus status);
/// Exactly the five raw values, in this letter case; nothing else has a status.
[[nodiscard]] std::optional<ServerHealthStatus> serverHealthStatusFromRawValue(QStringView text);

} // namespace tarnwick
