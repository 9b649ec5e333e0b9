#include "ViewCollaborators.h"

#include "LoginItem.h"
#include "SSHMetricsCollector.h"
#include "TerminalLauncher.h"

#include <QDesktopServices>

namespace tarnwick {

ViewCollaborators ViewCollaborators::real(ThisComputer& computer) {
    return {
        .computer = computer,
        .restartContainer = SSHMetricsCollector::restartContainer,
        .openServerSSH = TerminalLauncher::openServerSSH,
        .openDockerContainer = TerminalLauncher::openDockerContainer,
        .openAddress = [](const QUrl& address) { QDesktopServices::openUrl(address); },
        .sshHosts = SSHConfigParser::parseUserConfig,
        .sshConfigIncludes = SSHConfigParser::userConfigIncludes,
        .askAlias = SSHAlias::ask,
        .startsAtLogin = LoginItem::isEnabled,
        .setStartsAtLogin = LoginItem::setEnabled,
    };
}

} // namespace tarnwick
