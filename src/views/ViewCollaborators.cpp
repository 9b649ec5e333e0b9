#include "ViewCollaborators.h"

#include "SSHMetricsCollector.h"
#include "TerminalLauncher.h"

#include <QDesktopServices>
#include <QQmlEngine>

namespace tarnwick {

ViewCollaborators ViewCollaborators::real(ThisComputer& computer) {
    return {
        .computer = computer,
        .restartContainer = SSHMetricsCollector::restartContainer,
        .openServerSSH = TerminalLauncher::openServerSSH,
        .openDockerContainer = TerminalLauncher::openDockerContainer,
        .openAddress = [](const QUrl& address) { QDesktopServices::openUrl(address); },
        .sshHosts = SSHConfigParser::parseUserConfig,
    };
}

void setComputer(QQmlEngine& engine, ThisComputer& computer) {
    engine.setProperty("thisComputer", QVariant::fromValue(&computer));
}

ThisComputer& computerOf(const QObject& model) {
    return *qmlEngine(&model)->property("thisComputer").value<ThisComputer*>();
}

} // namespace tarnwick
