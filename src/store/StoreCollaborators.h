#pragma once

#include "AlertRules.h"
#include "Instant.h"
#include "ProbeManner.h"
#include "Role.h"
#include "SSHConfigParser.h"
#include "Server.h"

#include <QFuture>
#include <QList>
#include <QString>

#include <chrono>
#include <functional>
#include <optional>

namespace tarnwick {

class ThisComputer;

/// What the store needs of the world, so that tests can replace it. All are called on the main thread.
struct StoreCollaborators {
    /// As SSHMetricsCollector::collect().
    std::function<QFuture<ServerMetrics>(const Server&, const ProbeManner&)> collect;
    std::function<Instant()> clock;
    /// Monotonic.
    std::function<std::chrono::nanoseconds()> steadyTime = [] {
        return std::chrono::steady_clock::now().time_since_epoch();
    };
    /// As NotificationService::claim().
    std::function<bool(const QString& alertKey, Instant now)> claim;
    std::function<void(const Alert&, bool withSound)> notify;
    std::function<bool()> hasDefaultRoute;
    std::function<QList<SSHConfigHost>()> sshHosts;
    std::function<std::optional<QString>()> computerName;
    /// Holds `servers.json` and `settings.json`; made when missing.
    QString folder;
    Role role = Role::leader; ///< at first

    /// The real ones: probes over ssh and of `computer`, the wall clock, the desktop's notifications, the standard
    /// folder.
    [[nodiscard]] static StoreCollaborators real(ThisComputer& computer, Role role = Role::leader);
};

} // namespace tarnwick
