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

} // namespace

QString serverCommandLine(const Server& server) {
    if (server.isLocal)
        return u"echo 'Tarnwick: Connected to local machine'; echo ''"_s;
    return greeting(u"Tarnwick: Connecting to "_s + server.name + u"..."_s) + u"; ssh "_s + sshOperands(server);
}

QString containerCommandLine(const Server& server, const ContainerInfo& container) {
    const QString& target = container.name.isEmpty() ? container.id : container.name;
    const QString place = server.isLocal ? QString() : u" on "_s + server.name;
    const QString hello = greeting(u"Tarnwick: Connecting to container ["_s + target + u']' + place + u"..."_s);
    const QString enter = u"docker exec -it "_s + operand(target) + u' ' + containerShell.toString();
    if (server.isLocal)
        return hello + u"; "_s + enter;
    // Some characters are special even in double quotes, so those are only for a plain target.
    const QString remoteCommand = isPlain(target) ? u'"' + enter + u'"' : quoted(enter);
    return hello + u"; ssh -t "_s + sshOperands(server) + u' ' + remoteCommand;
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

} // namespace tarnwick::TerminalLauncher
