#include "StoreCollaborators.h"

#include "Desktop.h"
#include "NotificationService.h"
#include "SSHMetricsCollector.h"
#include "ServerStore.h"

namespace tarnwick {

StoreCollaborators StoreCollaborators::real(ThisComputer& computer) {
    return {
        .collect = [&computer](const Server& server) { return SSHMetricsCollector::collect(server, computer); },
        .clock = Instant::now,
        .notify =
            [](const Alert& alert, bool withSound, Instant now) {
                NotificationService::sendAlert(alert.title, alert.message, alert.key, withSound, now);
            },
        .sshHosts = SSHConfigParser::parseUserConfig,
        .computerName = Desktop::computerName,
        .folder = ServerStore::standardFolder(),
    };
}

} // namespace tarnwick
