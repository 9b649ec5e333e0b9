#include "TerminalLauncher.h"

#include "Desktop.h"
#include "ShellWord.h"

namespace tarnwick::TerminalLauncher {

using namespace Qt::StringLiterals;
using namespace ShellWord;

namespace {

// Runs bash in the container when it has one, else sh. Holds nothing that would need quoting inside double quotes.
constexpr QStringView containerShell = u"sh -c 'if command -v bash >/dev/null 2>&1; then exec bash; else exec sh; fi'";

/// A command that prints the text. Some shells' echo turns backslash sequences into control characters; printf does
/// not.
QString greeting(const QString& text) {
    return (text.contains(u'\\') ? u"printf '%s\\n' "_s : u"echo "_s) + quoted(text);
}

/// The key option, the port and the target.
QString sshOperands(const Server& server) {
    const QString key = server.customSshKeyPath ? u"-i "_s + quoted(*server.customSshKeyPath) + u' ' : QString();
    return key + u"-p "_s + QString::number(server.port) + u' ' + operand(server.user + u'@' + server.host);
}

const QString& targetOf(const ContainerInfo& container) {
    return container.name.isEmpty() ? container.id : container.name;
}

QString placeOf(const Server& server, const QString& target) {
    return u"container ["_s + target + u']' + (server.isLocal ? QString() : u" on "_s + server.name);
}

/// Runs a command of docker, which names the target, where the container is.
QString dockerLine(const Server& server, const QString& ssh, const QString& target, const QString& command) {
    if (server.isLocal)
        return command;
    // Some characters are special even in double quotes, so those are only for a plain target.
    return ssh + sshOperands(server) + u' ' + (isPlain(target) ? u'"' + command + u'"' : quoted(command));
}

} // namespace

QString serverCommandLine(const Server& server) {
    if (server.isLocal)
        return u"echo 'Tarnwick: Connected to local machine'; echo ''"_s;
    return greeting(u"Tarnwick: Connecting to "_s + server.name + u"..."_s) + u"; ssh "_s + sshOperands(server);
}

QString containerCommandLine(const Server& server, const ContainerInfo& container) {
    const QString target = targetOf(container);
    return greeting(u"Tarnwick: Connecting to "_s + placeOf(server, target) + u"..."_s) + u"; "_s +
           dockerLine(server, u"ssh -t "_s, target,
                      u"docker exec -it "_s + operand(target) + u' ' + containerShell.toString());
}

QString containerLogCommandLine(const Server& server, const ContainerInfo& container) {
    const QString target = targetOf(container);
    return greeting(u"Tarnwick: Last 200 log lines of "_s + placeOf(server, target) + u"..."_s) + u"; "_s +
           dockerLine(server, u"ssh "_s, target, u"docker logs --tail 200 "_s + operand(target));
}

void openInTerminal(const QString& command) {
    Desktop::openTerminal(command);
}

void openServerSSH(const Server& server) {
    openInTerminal(serverCommandLine(server));
}

void openDockerContainer(const Server& server, const ContainerInfo& container) {
    openInTerminal(containerCommandLine(server, container));
}

void openContainerLog(const Server& server, const ContainerInfo& container) {
    openInTerminal(containerLogCommandLine(server, container));
}

} // namespace tarnwick::TerminalLauncher
