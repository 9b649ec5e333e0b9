#include "OpenSshServer.h"

#include "Files.h"

#include <QDeadlineTimer>
#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>

#include <csignal>

#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace tarnwick {

namespace {

constexpr QLatin1StringView serverProgram = "/usr/sbin/sshd"_L1;

quint16 freePort() {
    QTcpServer server;
    return server.listen(QHostAddress::LocalHost) ? server.serverPort() : quint16{0};
}

bool isListening(quint16 port) {
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, port);
    return socket.waitForConnected();
}

/// Whether this version of the server knows the option.
bool accepts(const QStringList& arguments) {
    QProcess check;
    check.start(serverProgram, QStringList{u"-t"_s} + arguments);
    return check.waitForFinished() && check.exitCode() == 0;
}

bool makeKey(const QString& path) {
    return QProcess::execute(u"/usr/bin/ssh-keygen"_s,
                             {u"-q"_s, u"-t"_s, u"ed25519"_s, u"-N"_s, QString(), u"-f"_s, path}) == 0;
}

} // namespace

QString OpenSshServer::start(QStringView forceCommand) {
    if (!QFile::exists(serverProgram))
        return u"%1 is missing: install openssh-server"_s.arg(serverProgram);
    if (::getuid() == 0 && !QDir().mkpath(u"/run/sshd"_s)) // sshd does not start as root without this folder
        return u"Cannot make /run/sshd"_s;
    if (!QFile::exists(keyPath()) && !(makeKey(folder_.filePath(u"host_key"_s)) && makeKey(keyPath())))
        return u"Cannot make keys"_s;
    port_ = freePort();
    // When this computer is busy its real `top` prints "100.0 us" without the space before the number, which the probe
    // cannot read. A test must not depend on that, so each host has its own `top`.
    if (!writeFiles(forceCommand) || !(QFile::exists(standIns_.folder() + u"/top"_s) || standIns_.addProcessor("88.1")))
        return u"Cannot write to %1"_s.arg(folder_.path());

    process_.setStandardInputFile(QProcess::nullDevice());
    process_.setStandardOutputFile(QProcess::nullDevice());
    process_.setStandardErrorFile(folder_.filePath(u"log"_s));
    process_.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); }); // it ends even when a test crashes
    const QStringList configuration{u"-f"_s, folder_.filePath(u"sshd_config"_s)};
    // OpenSSH 9.8 and later does not answer a client for a while whose key it has refused.
    const QStringList forgiving = configuration + QStringList{u"-o"_s, u"PerSourcePenalties=no"_s};
    process_.start(serverProgram, QStringList{u"-D"_s, u"-e"_s} + (accepts(forgiving) ? forgiving : configuration));
    return waitUntilListening();
}

bool OpenSshServer::writeFiles(QStringView forceCommand) const {
    QString configuration =
        u"Port %1\nHostKey %2/host_key\nAuthorizedKeysFile %2/user_key.pub\nPidFile none\nSetEnv PATH=%3\n"_s.arg(port_)
            .arg(folder_.path(), standIns_.searchPath());
    if (!forceCommand.isEmpty())
        configuration += u"ForceCommand %1\n"_s.arg(forceCommand);
    const QByteArray common = readFile(QStringLiteral(TARNWICK_STAND_INS "/sshd_config"));
    return !common.isEmpty() && writeFile(folder_.filePath(u"sshd_config"_s), common + configuration.toUtf8());
}

QString OpenSshServer::waitUntilListening() {
    for (const QDeadlineTimer deadline(20s); !deadline.hasExpired();) {
        if (isListening(port_))
            return {};
        if (process_.waitForFinished(10) || process_.state() == QProcess::NotRunning)
            break;
    }
    const QByteArray log = readFile(folder_.filePath(u"log"_s));
    return u"The ssh server does not listen: %1 %2"_s.arg(process_.errorString(), QString::fromLocal8Bit(log));
}

void OpenSshServer::yieldProcessor() {
    ::setpriority(PRIO_PROCESS, static_cast<id_t>(process_.processId()), 19);
}

void OpenSshServer::stop() {
    process_.terminate();
    process_.waitForFinished();
}

QByteArray OpenSshServer::knownHostsLine() const {
    const QString host = u"[%1]:%2 "_s.arg(address()).arg(port_);
    return host.toLatin1() + readFile(folder_.filePath(u"host_key.pub"_s));
}

} // namespace tarnwick
