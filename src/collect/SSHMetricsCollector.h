#pragma once

#include "ProbeScripts.h"
#include "ProcessRunner.h"
#include "Server.h"

#include <QFuture>
#include <QString>

namespace tarnwick {

/// One probe of one server, one restart of one container. Stateless; call from any thread, nothing waits on the
/// caller's. A future ends without a result only when the application exits meanwhile.
namespace SSHMetricsCollector {

/// One probe, by ssh or, for the local server, by a local shell. Never fails: a failure of the transport or of the
/// payload is an offline record whose `errorMessage` says why. `isEnabled` and `dockerEnabled` are not looked at.
[[nodiscard]] QFuture<ServerMetrics> collect(const Server& server);
/// True when the restart command exited with status 0. Unlike a probe it goes by the user's own known-hosts file.
[[nodiscard]] QFuture<bool> restartContainer(const Server& server, const QString& containerId);

/// The pure halves of the above. The latency of a local probe includes the time of the measurements before it.
[[nodiscard]] ProcessRequest remoteProbeRequest(const Server& server);
[[nodiscard]] ProcessRequest localProbeRequest(const LocalMeasurements& now);
[[nodiscard]] ProcessRequest restartRequest(const Server& server, const QString& containerId);
[[nodiscard]] ServerMetrics remoteMetrics(const ProcessOutcome& outcome);
[[nodiscard]] ServerMetrics localMetrics(const ProcessOutcome& outcome, std::chrono::nanoseconds beforeLaunch);

} // namespace SSHMetricsCollector

} // namespace tarnwick
