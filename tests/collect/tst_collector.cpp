#include "../computer/SampleComputer.h"
#include "Files.h"
#include "NoThreads.h"
#include "OpenSshServer.h"
#include "SSHAlias.h"
#include "SSHMetricsCollector.h"
#include "SharedConnection.h"
#include "UserHome.h"

#include <QDeadlineTimer>
#include <QRegularExpression>
#include <QTest>

#include <csignal>
#include <functional>
#include <latch>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace tarnwick {

namespace {

Server serverAt(const OpenSshServer& host) {
    Server server;
    server.host = host.address();
    server.port = host.port();
    server.user = host.user();
    server.customSshKeyPath = host.keyPath();
    return server;
}

/// Its home volume does not answer, like one of a file server that is gone.
class StuckKernel : public ScriptedKernel {
public:
    std::latch mayAnswer{1};

    std::optional<VolumeSpace> homeVolume() override {
        mayAnswer.wait();
        return {};
    }
};

/// The result of the future, or a default one if it ends without.
template <typename T>
T resultOf(const QFuture<T>& future) {
    const bool isDone = QTest::qWaitFor([&future] { return future.isFinished(); }, 25'000);
    return isDone && future.resultCount() == 1 ? future.result() : T{};
}

QString reasonOf(const ServerMetrics& metrics) {
    return metrics.errorMessage.value_or(u"(none)"_s);
}

const QByteArray containerRows = readFile(QStringLiteral(TARNWICK_FIXTURES "/docker/containers.tsv"));

/// One probe; the local server's is of the sample computer.
QFuture<ServerMetrics> probe(const Server& server) {
    static SampleComputer sample;
    return SSHMetricsCollector::collect(server, sample.computer, {});
}

QString failureOf(const Server& server) {
    return reasonOf(resultOf(probe(server)));
}

/// Why it failed, or "".
QString change(const Server& server, const QString& container, ContainerAction action) {
    const QFuture<std::optional<QString>> changed = SSHMetricsCollector::changeContainer(server, container, action);
    return resultOf(changed).value_or(changed.resultCount() == 1 ? QString() : u"no result"_s);
}

} // namespace

class CollectorTest : public QObject {
    Q_OBJECT

    UserHome home_;
    OpenSshServer host_; ///< answers, and lists the recorded containers
    StuckKernel stuckKernel_;
    ScriptedSensors sensors_;
    ThisComputer stuckComputer_{stuckKernel_, sensors_, macWords};
    QFuture<ServerMetrics> stuck_; ///< the probe of that one, begun first

private Q_SLOTS:
    void initTestCase() {
        QCOMPARE(home_.error(), QString());
        QCOMPARE(host_.start(), QString());
        ProcessRunner::raiseOpenFileLimit();
        Server here;
        here.isLocal = true;
        stuck_ = SSHMetricsCollector::collect(here, stuckComputer_, {ProcessRequest::Launch::paced});
    }
    void cleanupTestCase() { stuckKernel_.mayAnswer.count_down(); }
    void init() {
        QVERIFY(home_.writeSshFile(u"config"_s, {}) && home_.writeSshFile(u"known_hosts"_s, {}));
        QVERIFY(host_.standIns().addDocker(containerRows) && host_.standIns().addDisk(80, 25));
        QVERIFY(host_.standIns().addRecording(u"top"_s, "%Cpu(s): 51.9 us,  5.3 sy,  0.0 ni, 42.7 id,  0.0 wa\n"));
    }

    /// The first test, because a thread that was made stays.
    void readsAnAnswerWithoutAnotherThread() {
        QCOMPARE(ProcessRunner::run({.executable = u"/bin/true"_s, .arguments = {}}).result().status, 0);
        const NoThreads scarce;
        QCOMPARE(resultOf(probe(serverAt(host_))).cpuPercent, 58.0);
    }

    void healthyHost() {
        const ServerMetrics metrics = resultOf(probe(serverAt(host_)));
        QCOMPARE(reasonOf(metrics), u"(none)"_s);
        QCOMPARE(metrics.cpuPercent, 58.0);
        QCOMPARE(metrics.gpuPercent, std::nullopt);
        QCOMPARE(std::tuple(metrics.diskUsedGB, metrics.diskTotalGB), std::tuple(20.0, 80.0));
        QVERIFY(metrics.memoryUsedMB > 0 && metrics.memoryUsedMB < metrics.memoryTotalMB && metrics.latencyMs > 0);
        QCOMPARE(metrics.containers.size(), 6);
        QCOMPARE(metrics.containers[1].name, u"db"_s);
    }

    void badHosts() {
        // The behaviour of a host, and a pattern of the reason that is shown.
        for (const auto& [behaviour, reason] :
             {std::pair(HostBehaviour::greets, u"Failed to parse metrics: .+"_s),
              {u"exec yes", u"Response too large"_s},
              {u"printf '{\"cpu\":12,\"mem_'; sleep 0.1; kill -9 $PPID", u"Connection to 127.0.0.1 closed.*"_s},
              {u"printf '{\"cpu\":12,\"mem_'; kill -9 $$", u"Connection refused / timeout"_s},
              {u"echo ' no  quota ' >&2; exit 3", u"no  quota"_s},
              {u"yes broken | head -c 1000000 >&2; exit 4", u"(broken\n)+b?r?o?k?e?"_s},
              {u"nonsense", u".*nonsense.*"_s}}) {
            OpenSshServer host;
            QVERIFY(host.standIns().addRecording(u"top"_s, {}));
            QCOMPARE(host.start(behaviour), QString());
            const ServerMetrics metrics = resultOf(probe(serverAt(host)));
            const QRegularExpression pattern(QRegularExpression::anchoredPattern(reason),
                                             QRegularExpression::DotMatchesEverythingOption);
            QVERIFY2(pattern.match(reasonOf(metrics)).hasMatch(), qPrintable(reasonOf(metrics).left(200)));
            QCOMPARE(metrics.latencyMs, 0);
            QCOMPARE(metrics.cpuPercent, 0.0);
        }
    }

    void unreachable() {
        OpenSshServer gone;
        QVERIFY(gone.start().isEmpty());
        gone.stop();
        QCOMPARE(failureOf(serverAt(gone)),
                 u"ssh: connect to host 127.0.0.1 port %1: Connection refused"_s.arg(gone.port()));

        Server stranger = serverAt(host_);
        stranger.customSshKeyPath = gone.keyPath();
        QVERIFY2(failureOf(stranger).endsWith(u"Permission denied (publickey)."), qPrintable(failureOf(stranger)));

        Server option = serverAt(host_);
        option.user = u"-oProxyCommand=touch "_s + home_.folder() + u"/touched;"_s;
        QVERIFY(failureOf(option) != u"(none)" && !QFile::exists(home_.folder() + u"/touched"_s));
        Server unspeakable = serverAt(host_);
        unspeakable.host = u"a\0b"_s; // no argument of a process can hold this
        QVERIFY(failureOf(unspeakable).startsWith(u"Cannot start /usr/bin/ssh: "));
        QVERIFY(change(unspeakable, u"id"_s, ContainerAction::stop).startsWith(u"Cannot start /usr/bin/ssh: "));
    }

    void asksNobody() {
        QProcess agent; // one that wants each use of a key confirmed, and has nobody to ask
        const QString socket = home_.folder() + u"/agent"_s;
        agent.start(u"/usr/bin/ssh-agent"_s, {u"-D"_s, u"-a"_s, socket});
        QTRY_VERIFY(QFile::exists(socket));
        const QString locked = home_.folder() + u"/locked"_s;
        const QStringList withPassphrase{u"-q"_s, u"-t"_s, u"ed25519"_s, u"-N"_s, u"secret"_s, u"-f"_s, locked};
        QCOMPARE(QProcess::execute(u"/usr/bin/ssh-keygen"_s, withPassphrase), 0);
        QVERIFY(home_.writeSshFile(u"config"_s, "Host behind\nHostName localhost\nProxyJump " + host_.user().toUtf8() +
                                                    "@127.0.0.1:" + QByteArray::number(host_.port()) + '\n'));
        StandIns desktop;
        QVERIFY(desktop.add(u"askpass"_s, "#!/bin/sh\necho \"$*\" >> \"$0.asked\"\n"));
        const QString askpass = desktop.folder() + u"/askpass"_s;
        qputenv("DISPLAY", ":77");
        qputenv("SSH_ASKPASS", QFile::encodeName(askpass));
        qputenv("SSH_ASKPASS_REQUIRE", "force");

        Server server = serverAt(host_);
        server.customSshKeyPath = locked;
        QVERIFY2(failureOf(server).endsWith(u"Permission denied (publickey)."), qPrintable(failureOf(server)));
        server.host = u"behind"_s; // the jump host's key is not known, and its client is not in batch mode
        QVERIFY2(failureOf(server).startsWith(u"Host key verification failed."), qPrintable(failureOf(server)));
        QVERIFY(!change(server, u"id"_s, ContainerAction::restart).isEmpty());
        qputenv("SSH_AUTH_SOCK", QFile::encodeName(socket));
        QCOMPARE(QProcess::execute(u"/usr/bin/ssh-add"_s, {u"-q"_s, u"-c"_s, host_.keyPath()}), 0);
        server = serverAt(host_);
        server.customSshKeyPath = host_.keyPath() + u".pub"_s;
        QVERIFY2(failureOf(server).contains(u"agent refused operation"), qPrintable(failureOf(server)));
        for (const char* name : {"DISPLAY", "SSH_ASKPASS", "SSH_ASKPASS_REQUIRE", "SSH_AUTH_SOCK"})
            qunsetenv(name);
        agent.kill();
        agent.waitForFinished();
        QCOMPARE(readFile(askpass + u".asked"_s), QByteArray());
    }

    /// A host that a firewall hides: only the jump host is let in. An import by its address does not get there, its
    /// alias does, and ssh says so beforehand.
    void behindAJumpHost() {
        OpenSshServer inner;
        QCOMPARE(inner.start(), QString());
        QVERIFY(writeFile(inner.keyPath() + u".pub"_s, "from=\"127.0.0.1\" " + readFile(inner.keyPath() + u".pub"_s)));
        const auto block = [](const char* alias, const OpenSshServer& host, const QByteArray& more) {
            return "Host "_ba + alias + "\nHostName 127.0.0.1\nUser " + host.user().toUtf8() + "\nPort " +
                   QByteArray::number(host.port()) + "\nIdentityFile " + host.keyPath().toUtf8() + '\n' + more;
        };
        const QByteArray config = block("inner", inner, "ProxyJump jump\n") + block("jump", host_, {}) +
                                  "Host 127.0.0.1 inner\nBindAddress 127.0.0.9\n"; // where this computer seems to be
        const QByteArray known = host_.knownHostsLine();
        QVERIFY(home_.writeSshFile(u"config"_s, config) && home_.writeSshFile(u"known_hosts"_s, known));
        const SSHConfigHost host = SSHConfigParser::parse(QString::fromUtf8(config), home_.folder())[0];

        const QString failure = failureOf(SSHConfigParser::newServer(host));
        QVERIFY2(failure.contains(u"Permission denied"_s), qPrintable(failure));
        const SSHAliasMeaning meaning = resultOf(SSHAlias::ask(host));
        QCOMPARE(meaning.lost, SSHAliasMeaning::Lost::jumpHost);
        QCOMPARE(failureOf(SSHConfigParser::newServer(meaning.host)), u"(none)"_s);
    }

    void sharedConnections() {
        QVERIFY(home_.writeSshFile(u"config"_s, "Host *\nControlMaster auto\nControlPersist 20\nControlPath " +
                                                    home_.folder().toUtf8() + "/%p\n"));
        const QDeadlineTimer deadline(15s);
        const Server server = serverAt(host_);
        QCOMPARE(failureOf(server), u"(none)"_s);
        const QString master = home_.folder() + u"/%1"_s.arg(host_.port());
        QVERIFY(QFile::exists(master)); // the shared connection stays, and holds our pipes open
        QCOMPARE(failureOf(server), u"(none)"_s);
        QVERIFY(!deadline.hasExpired());
        QProcess::execute(u"/usr/bin/ssh"_s, {u"-q"_s, u"-O"_s, u"exit"_s, u"-p"_s, QString::number(server.port),
                                              server.user + u'@' + server.host});
        QTRY_VERIFY(!QFile::exists(master));
    }

    /// Whatever has become of a connection, the next probe has an answer, over another one.
    void sharesItsOwnConnections() {
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(home_.folder()));
        const Server server = serverAt(host_);
        const QString socket = SharedConnection::path(server);
        const auto failure = [&server] {
            static SampleComputer sample;
            return reasonOf(resultOf(SSHMetricsCollector::collect(server, sample.computer, {.sharedFor = 20s})));
        };
        const auto master = [&] { // its process
            QProcess client;
            client.setProcessChannelMode(QProcess::MergedChannels);
            client.start(u"/usr/bin/ssh"_s, {u"-O"_s, u"check"_s, u"-o"_s, u"ControlPath="_s + socket, u"x"_s});
            client.waitForFinished();
            static const QRegularExpression number(u"pid=(\\d+)"_s);
            return number.match(QString::fromUtf8(client.readAll())).captured(1).toInt();
        };
        QCOMPARE(failure(), u"(none)"_s);
        int first = master();
        QVERIFY(first > 0);
        const auto end = [&first](int signal) {
            return ::kill(first, signal) == 0;
        };
        const std::function<bool()> accidents[] = {
            [&] { return end(SIGSTOP); },
            [&] { return end(SIGKILL); },
            [&] { return end(SIGKILL) && QFile::remove(socket) && writeFile(socket, "x"); },
            [&] { return end(SIGKILL) && QFile::remove(socket) && QFile::link(u"/etc/passwd"_s, socket); },
        };
        for (const std::function<bool()>& accident : accidents) {
            QCOMPARE(failure(), u"(none)"_s);
            QCOMPARE(master(), first); // as nothing has happened
            QVERIFY(accident());
            QCOMPARE(failure(), u"(none)"_s);
            const int next = master();
            QVERIFY(next > 0 && next != first);
            ::kill(std::exchange(first, next), SIGKILL);
        }
        ::kill(first, SIGTERM);
        QVERIFY(!change(server, u"id"_s, ContainerAction::restart)
                     .isEmpty()); // accepts known hosts only, and so no connection of a probe
    }

    void changesContainers() {
        const Server server = serverAt(host_);
        const QString id = u"3f2a9c1d7b44"_s;
        QCOMPARE(failureOf(server), u"(none)"_s); // a probe accepts any host key
        using enum ContainerAction;
        QVERIFY(change(server, id, restart).endsWith(u"verification failed.")); // this accepts known ones only
        QVERIFY(home_.writeSshFile(u"known_hosts"_s, host_.knownHostsLine()));
        for (const auto& [action, isRunning] : {std::pair(stop, false), {start, true}, {restart, true}}) {
            QCOMPARE(change(server, id, action), QString());
            QCOMPARE(resultOf(probe(server)).containers[0].isRunning(), isRunning);
            QCOMPARE(change(server, u"nosuch"_s, action), u"Error response from daemon: No such container: nosuch"_s);
        }
        QCOMPARE(host_.standIns().dockerActions(),
                 (QStringList{u"stop "_s + id, u"stop nosuch"_s, u"start "_s + id, u"start nosuch"_s,
                              u"restart "_s + id, u"restart nosuch"_s}));
    }

    void thisComputer() {
        StandIns tools;
        QVERIFY(tools.addDocker(containerRows));
        Server here;
        here.isLocal = true;
        const QByteArray before = qgetenv("PATH");
        qputenv("PATH", tools.searchPath().toLocal8Bit());
        const ServerMetrics metrics = resultOf(probe(here));
        const QString id = u"9b1e77a0c2d5"_s;
        const QStringList failures{change(here, id, ContainerAction::restart),
                                   change(here, u"nosuch"_s, ContainerAction::stop)};
        qputenv("PATH", before);

        QCOMPARE(reasonOf(metrics), u"(none)"_s);
        QCOMPARE(metrics.uptimeString, u"local"_s);
        QCOMPARE(std::tuple(metrics.cpuPercent, metrics.gpuPercent), std::tuple(12.5, std::optional(8.0)));
        QCOMPARE(std::tuple(metrics.memoryUsedMB, metrics.memoryTotalMB), std::tuple(11'264.0, 16'384.0));
        QCOMPARE(std::tuple(metrics.diskUsedGB, metrics.diskTotalGB), std::tuple(120.3, 460.4));
        QVERIFY(metrics.loadAvg1m >= 0 && metrics.latencyMs >= 0);
        QCOMPARE(metrics.containers.size(), 6);
        QCOMPARE(failures, (QStringList{{}, u"Error response from daemon: No such container: nosuch"_s}));
        QCOMPARE(tools.dockerActions(), (QStringList{u"restart "_s + id, u"stop nosuch"_s}));
    }

    void limitHoldsForReadingsThatHang() {
        QTRY_VERIFY_WITH_TIMEOUT(stuck_.isFinished(), 40'000);
        QCOMPARE(reasonOf(resultOf(stuck_)), u"No answer within 30 seconds"_s);
    }
};

} // namespace tarnwick

QTEST_GUILESS_MAIN(tarnwick::CollectorTest)
#include "tst_collector.moc"
