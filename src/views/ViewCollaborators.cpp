#include "ViewCollaborators.h"

#include "MacHardwareCollector.h"
#include "SSHMetricsCollector.h"
#include "TerminalLauncher.h"

#include <QDesktopServices>

namespace tarnwick {

ViewCollaborators ViewCollaborators::real() {
    return {
        .readings = {.avgSoc = [] { return MacHardwareCollector::queryQuickThermals().avgSoc; },
                     .gpuPercent =
                         [] {
                             return MacHardwareCollector::queryGpuUsage();
                         }},
        .restartContainer = SSHMetricsCollector::restartContainer,
        .openServerSSH = TerminalLauncher::openServerSSH,
        .openDockerContainer = TerminalLauncher::openDockerContainer,
        .openAddress = [](const QUrl& address) { QDesktopServices::openUrl(address); },
    };
}

} // namespace tarnwick
