#pragma once

#include "AppSettings.h"
#include "Decoded.h"
#include "Server.h"

#include <QByteArray>
#include <QList>

#include <optional>

namespace tarnwick {

/// `servers.json`: one array of servers in fleet order. Every key of a record is required but `customSshKeyPath`,
/// `metrics`, `gpuPercent` and `errorMessage`; a missing key, a wrong type, or a number that its field cannot hold
/// makes the whole file unreadable. Unknown keys are ignored.
[[nodiscard]] Decoded<QList<Server>> decodeServers(const QByteArray& json);
/// Compact JSON, forward slashes escaped. Absent when a number anywhere is not finite: JSON has no such number.
[[nodiscard]] std::optional<QByteArray> encodeServers(const QList<Server>& servers);

/// `settings.json`: one object. A key that is absent or null takes its default; a wrong type or an unknown pin
/// makes the whole file unreadable.
[[nodiscard]] Decoded<AppSettings> decodeSettings(const QByteArray& json);
/// All nine keys, always. Absent when a number is not finite.
[[nodiscard]] std::optional<QByteArray> encodeSettings(const AppSettings& settings);

} // namespace tarnwick
