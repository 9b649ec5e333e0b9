#include "Subject.h"

#include "Coding.h"
#include "Files.h"

#include <QRandomGenerator>

#include <algorithm>
#include <csignal>
#include <variant>

#include <sys/prctl.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace tarnwick {

namespace {

QList<Server> decoded(const QString& path) {
    const auto result = decodeServers(readFile(path));
    const auto* servers = std::get_if<QList<Server>>(&result);
    return servers ? *servers : QList<Server>();
}

} // namespace

void waitUpTo(std::chrono::microseconds limit) {
    QThread::usleep(QRandomGenerator::global()->bounded(static_cast<quint32>(limit.count())));
}

Subject::~Subject() {
    killNow();
    for (const int process : processesOfHome())
        ::kill(process, SIGKILL);
}

QString Subject::store(const QList<Server>& servers) const {
    AppSettings settings;
    settings.refreshIntervalSeconds = 10;
    settings.hasCompletedOnboarding = true;
    stored_ = servers.size();
    const bool isStored =
        writeFile(dataFolder() + u"/servers.json"_s, encodeServers(servers).value_or(QByteArray())) &&
        writeFile(dataFolder() + u"/settings.json"_s, encodeSettings(settings).value_or(QByteArray()));
    return isStored ? QString() : u"cannot store"_s;
}

void Subject::start(const QStringList& variables) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (variables.filter(u"DISPLAY="_s).isEmpty())
        for (const QString& name : {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s, u"DBUS_SESSION_BUS_ADDRESS"_s})
            environment.remove(name);
    for (const QString& name : {u"XDG_DATA_HOME"_s, u"XDG_RUNTIME_DIR"_s, u"QT_QPA_PLATFORM"_s})
        environment.remove(name);
    environment.insert(u"HOME"_s, home());
    for (const QString& variable : variables)
        environment.insert(variable.section(u'=', 0, 0), variable.section(u'=', 1));
    process_.setProcessEnvironment(environment);
    process_.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    process_.start(executable_, QStringList());
    process_.waitForStarted();
}

bool Subject::startAgain() const {
    QProcess second;
    second.setProcessEnvironment(process_.processEnvironment());
    second.start(executable_, QStringList());
    return second.waitForFinished(10'000) && second.exitStatus() == QProcess::NormalExit && second.exitCode() == 0;
}

bool Subject::printsLine() {
    return process_.bytesAvailable() > 0 || process_.waitForReadyRead(10'000);
}

void Subject::killNow() {
    process_.kill();
    process_.waitForFinished();
}

bool Subject::quits() {
    process_.terminate();
    return process_.waitForFinished(2'000) && process_.exitStatus() == QProcess::NormalExit && process_.exitCode() == 0;
}

bool Subject::answers(std::chrono::seconds limit) const {
    const QDateTime asked = QDateTime::currentDateTimeUtc();
    return within(limit, [&] {
        const QList<Server> servers = decoded(dataFolder() + u"/servers.json"_s);
        return std::ranges::any_of(servers, [&](const Server& server) {
            return server.metrics && server.metrics->lastChecked.toDateTime() > asked;
        });
    });
}

QString Subject::damage() const {
    const QStringList files = QDir(dataFolder()).entryList(QDir::Files);
    if (const QStringList aside = files.filter(u"unreadable"_s); !aside.isEmpty())
        return u"moved aside: "_s + aside.join(u' ');
    if (const qsizetype size = decoded(dataFolder() + u"/servers.json"_s).size(); size != stored_)
        return u"%1 of %2 servers are stored"_s.arg(size).arg(stored_);
    if (!std::holds_alternative<AppSettings>(decodeSettings(readFile(dataFolder() + u"/settings.json"_s))))
        return u"settings.json does not decode"_s;
    return {};
}

QList<int> Subject::processesOfHome() const {
    const QByteArray mark = "HOME=" + QFile::encodeName(home()) + '\0';
    QList<int> result;
    const QStringList processes = QDir(u"/proc"_s).entryList({u"[0-9]*"_s}, QDir::Dirs);
    for (const QString& process : processes)
        if (readFile(u"/proc/%1/environ"_s.arg(process)).contains(mark))
            result << process.toInt();
    result.removeAll(static_cast<int>(process_.processId()));
    return result;
}

QStringList Subject::childrenLeft() const {
    static_cast<void>(within(5s, [this] { return processesOfHome().isEmpty(); }));
    QStringList result;
    for (const int process : processesOfHome()) {
        const QByteArray line = readFile(u"/proc/%1/cmdline"_s.arg(process)).replace('\0', ' ').simplified();
        result << QString::fromLocal8Bit(line.left(60));
        ::kill(process, SIGKILL);
    }
    return result;
}

} // namespace tarnwick
