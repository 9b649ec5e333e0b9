#pragma once

#include "ProcessRunner.h"
#include "Server.h"

#include <QFuture>
#include <QString>

namespace tarnwick {

/// Probes servers and restarts containers. Stateless; call from any thread, nothing waits on the caller's.
namespace SSHMetricsCollector {

/// One probe, by ssh or, for the local server, by a local shell. Never fails: a failure of the transport or of the
/// payload is an offline record whose `errorMessage` says why. `isEnabled` and `dockerEnabled` are not looked at.
[[nodiscard]] QFuture<ServerMetrics> collect(const Server& server);
/// True when the restart command exited with status 0.
[[nodiscard]] QFuture<bool> restartContainer(const Server& server, const QString& containerId);

/// The pure halves of the above.
[[nodiscard]] ProcessRequest remoteProbeRequest(const Server& server);
[[nodiscard]] ProcessRequest restartRequest(const Server& server, const QString& containerId);
[[nodiscard]] ServerMetrics remoteMetrics(const ProcessOutcome& outcome);
[[nodiscard]] ServerMetrics localMetrics(const ProcessOutcome& outcome, std::chrono::nanoseconds beforeLaunch);

} // namespace SSHMetricsCollector

} // namespace tarnwick
