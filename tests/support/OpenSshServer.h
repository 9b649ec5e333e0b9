#pragma once

#include "StandIns.h"

#include <QByteArray>
#include <QFileInfo>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace tarnwick {

/// Commands for OpenSshServer::start(), which a session runs instead of the client's command.
namespace HostBehaviour {
/// Prints nothing for as long as the connection lasts.
inline constexpr QStringView hangs = u"while kill -0 $PPID 2>/dev/null; do sleep 0.1; done";
/// Prints a greeting before the command's output.
inline constexpr QStringView greets = u"echo Welcome to db1; exec /bin/sh -c \"$SSH_ORIGINAL_COMMAND\"";
} // namespace HostBehaviour

/// A real OpenSSH server on a free port of the loopback interface, run by any user. Its keys, configuration and log are
/// in a temporary folder.
class OpenSshServer {
public:
    ~OpenSshServer() { stop(); }

    /// Starts the server, and returns when it takes connections. `forceCommand` runs in every session instead of the
    /// client's command, which is then in SSH_ORIGINAL_COMMAND. Empty on success, else why it does not run.
    [[nodiscard]] QString start(QStringView forceCommand = {});
    /// Gives the server the lowest priority: a real host would not use this computer's processor either.
    void yieldProcessor();
    /// Accepts no more connections; open ones stay until their clients end.
    void stop();

    [[nodiscard]] QString address() const { return QStringLiteral("127.0.0.1"); }
    [[nodiscard]] quint16 port() const { return port_; }
    /// The only user that may log in, with the key of `keyPath`.
    [[nodiscard]] QString user() const { return QFileInfo(folder_.path()).owner(); }
    [[nodiscard]] QString keyPath() const { return folder_.filePath(QStringLiteral("user_key")); }
    /// The line of a known-hosts file for this server.
    [[nodiscard]] QByteArray knownHostsLine() const;
    /// The folder that is first on the search path of its sessions. start() adds a `top` unless there is one.
    [[nodiscard]] StandIns& standIns() { return standIns_; }

private:
    [[nodiscard]] bool writeFiles(QStringView forceCommand) const;
    [[nodiscard]] QString waitUntilListening();

    QTemporaryDir folder_;
    StandIns standIns_;
    quint16 port_ = 0;
    QProcess process_;
};

} // namespace tarnwick
