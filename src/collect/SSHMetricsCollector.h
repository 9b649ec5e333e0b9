#pragma once

#include "ProbeManner.h"
#include "ProcessRunner.h"
#include "Server.h"

#include <QFuture>
#include <QString>

namespace tarnwick {

class ThisComputer;
struct ProbedFigures;

/// Probes servers and restarts containers. No call waits. A future ends without a result only when the application
/// exits before it has one.
namespace SSHMetricsCollector {

/// One probe, by ssh or, for the local server, by a local shell. Never fails: a failure of the transport or of the
/// payload is an offline record whose `errorMessage` says why. `isEnabled` and `dockerEnabled` are not looked at.
/// Ends within 30 s of its client's launch; a local probe, which begins with readings of `computer`, is launched at
/// once and ends within 30 s whatever hangs. Over a shared connection that fails it is launched anew, over another one;
/// the limit is for both. Main thread; its event loop brings the result.
[[nodiscard]] QFuture<ServerMetrics> collect(const Server& server, ThisComputer& computer, const ProbeManner& manner);
/// Any thread. True when the restart command exited with status 0. Unlike a probe it uses the user's own known-hosts
/// file, so it fails on a host that is not in there.
[[nodiscard]] QFuture<bool> restartContainer(const Server& server, const QString& containerId);

/// The halves of the above: what is run, and what its outcome means. The latency of a local probe includes the time of
/// the measurements before it.
[[nodiscard]] ProcessRequest remoteProbeRequest(const Server& server, const ProbeManner& manner = {});
[[nodiscard]] ProcessRequest localProbeRequest(const ProbedFigures& figures);
[[nodiscard]] ProcessRequest restartRequest(const Server& server, const QString& containerId);
[[nodiscard]] ServerMetrics remoteMetrics(const ProcessOutcome& outcome);
[[nodiscard]] ServerMetrics localMetrics(const ProcessOutcome& outcome, std::chrono::nanoseconds beforeLaunch);

} // namespace SSHMetricsCollector

} // namespace tarnwick
