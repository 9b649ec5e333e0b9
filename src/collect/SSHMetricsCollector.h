#pragma once

#include "ProbeManner.h"
#include "ProcessRunner.h"
#include "Server.h"

#include <QFuture>
#include <QString>

#include <chrono>
#include <optional>

namespace tarnwick {

class ThisComputer;
struct ProbedFigures;

/// What docker is told to do with a container.
enum class ContainerAction { start, stop, restart };

/// Probes servers; starts, stops and restarts their containers. No call waits. A future ends without a result only when
/// the application exits before it has one.
namespace SSHMetricsCollector {

/// One probe, by ssh or, for the local server, by a local shell. Never fails: a failure of the transport or of the
/// payload is an offline record whose `errorMessage` says why. `isEnabled` and `dockerEnabled` are not looked at.
/// Ends within 30 s of its client's launch; a local probe, which begins with readings of `computer`, is launched at
/// once and ends within 30 s whatever hangs. Over a shared connection that fails it is launched anew, over another one;
/// the limit is for both. Main thread; its event loop brings the result.
[[nodiscard]] QFuture<ServerMetrics> collect(const Server& server, ThisComputer& computer, const ProbeManner& manner);
/// Any thread. Absent when the command exited with status 0, else why it failed: one line, never empty, most often the
/// client's own. Ends within 120 s. Unlike a probe it uses the user's own known-hosts file, so it fails on a host that
/// is not in there.
[[nodiscard]] QFuture<std::optional<QString>> changeContainer(const Server& server, const QString& containerId,
                                                              ContainerAction action);

/// The halves of the above: what is run, and what its outcome means. The latency of a local probe includes the time of
/// the measurements before it.
[[nodiscard]] ProcessRequest remoteProbeRequest(const Server& server, const ProbeManner& manner = {});
[[nodiscard]] ProcessRequest localProbeRequest(const ProbedFigures& figures);
[[nodiscard]] ProcessRequest actionRequest(const Server& server, const QString& containerId, ContainerAction action);
[[nodiscard]] ServerMetrics remoteMetrics(const ProcessOutcome& outcome);
[[nodiscard]] ServerMetrics localMetrics(const ProcessOutcome& outcome, std::chrono::nanoseconds beforeLaunch);
[[nodiscard]] std::optional<QString> actionFailure(const ProcessOutcome& outcome, const Server& server);

} // namespace SSHMetricsCollector

} // namespace tarnwick
