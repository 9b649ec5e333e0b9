#include "OpenSshServer.h"

#include "Files.h"

#include <QDeadlineTimer>

#include <csignal>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <pwd.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace tarnwick {

namespace {

constexpr QLatin1StringView serverProgram = "/usr/sbin/sshd"_L1;

/// Calls `use` with a socket and the loopback address of that port.
template <typename Use>
auto onLoopback(quint16 port, Use use) {
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const auto result = use(socket, address);
    ::close(socket);
    return result;
}

quint16 freePort() {
    return onLoopback(
        0,
        [](int socket, sockaddr_in& address) -> quint16 {
            socklen_t size = sizeof address;
            auto* any = reinterpret_cast<sockaddr*>(&address);
            const bool ok = ::bind(socket, any, size) == 0 && ::getsockname(socket, any, &size) == 0;
            return ok ? ntohs(address.sin_port) : quint16{0};
        });
}

bool isListening(quint16 port) {
    return onLoopback(
        port,
        [](int socket, sockaddr_in& address) {
            return ::connect(socket, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
        });
}

bool makeKey(const QString& path) {
    QProcess keygen;
    keygen.start(u"/usr/bin/ssh-keygen"_s, {u"-q"_s, u"-t"_s, u"ed25519"_s, u"-N"_s, QString(), u"-f"_s, path});
    return keygen.waitForFinished() && keygen.exitStatus() == QProcess::NormalExit && keygen.exitCode() == 0;
}

} // namespace

OpenSshServer::~OpenSshServer() {
    stop();
}

QString OpenSshServer::start(QStringView forceCommand) {
    if (!QFile::exists(serverProgram))
        return u"%1 is missing: install openssh-server"_s.arg(serverProgram);
    const passwd* account = ::getpwuid(::getuid());
    if (account == nullptr)
        return u"This user has no account"_s;
    user_ = QString::fromLocal8Bit(account->pw_name);
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
    process_.start(serverProgram, {u"-D"_s, u"-e"_s, u"-f"_s, folder_.filePath(u"sshd_config"_s)});
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
    if (process_.state() == QProcess::NotRunning)
        return;
    process_.terminate();
    process_.waitForFinished();
}

QByteArray OpenSshServer::knownHostsLine() const {
    const QString host = u"[%1]:%2 "_s.arg(address()).arg(port_);
    return host.toLatin1() + readFile(folder_.filePath(u"host_key.pub"_s));
}

} // namespace tarnwick
