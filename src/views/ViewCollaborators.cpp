#include "ViewCollaborators.h"

#include "LoginItem.h"
#include "TerminalLauncher.h"

#include <QDesktopServices>

namespace tarnwick {

ViewCollaborators ViewCollaborators::real(ThisComputer& computer) {
    return {
        .computer = computer,
        .changeContainer = SSHMetricsCollector::changeContainer,
        .openServerSSH = TerminalLauncher::openServerSSH,
        .openDockerContainer = TerminalLauncher::openDockerContainer,
        .openContainerLog = TerminalLauncher::openContainerLog,
        .openAddress = [](const QUrl& address) { QDesktopServices::openUrl(address); },
        .sshHosts = SSHConfigParser::parseUserConfig,
        .sshConfigIncludes = SSHConfigParser::userConfigIncludes,
        .askAlias = SSHAlias::ask,
        .startsAtLogin = LoginItem::isEnabled,
        .setStartsAtLogin = LoginItem::setEnabled,
    };
}

} // namespace tarnwick
