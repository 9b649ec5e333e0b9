#include "StoreCollaborators.h"

#include "Desktop.h"
#include "NotificationService.h"
#include "SSHMetricsCollector.h"
#include "ServerStore.h"
#include "ThisComputer.h"

namespace tarnwick {

StoreCollaborators StoreCollaborators::real(ThisComputer& computer, Role role) {
    return {
        .collect =
            [&computer](const Server& server, const ProbeManner& manner) {
                return SSHMetricsCollector::collect(server, computer, manner);
            },
        .clock = Instant::now,
        .claim = NotificationService::claim,
        .notify =
            [](const Alert& alert, bool withSound) {
                Desktop::post(NotificationService::notification(alert.title, alert.message, withSound));
            },
        .hasDefaultRoute = [&computer] { return computer.hasDefaultRoute(); },
        .sshHosts = SSHConfigParser::parseUserConfig,
        .computerName = Desktop::computerName,
        .folder = ServerStore::standardFolder(),
        .role = role,
    };
}

} // namespace tarnwick
