#include "../computer/SampleComputer.h"
#include "Files.h"
#include "OpenSshServer.h"
#include "ProbePayload.h"
#include "ProbeScripts.h"
#include "SSHMetricsCollector.h"
#include "UserHome.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QTest>

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

Server localServer() {
    Server server;
    server.isLocal = true;
    return server;
}

/// The result of the future, or a default one if it ends without.
template <typename T>
T resultOf(const QFuture<T>& future) {
    const bool isDone = QTest::qWaitFor([&future] { return future.isFinished(); }, 25'000);
    return isDone && future.resultCount() == 1 ? future.result() : T{};
}

QString reasonOf(const ServerMetrics& metrics) {
    return metrics.errorMessage.value_or(u"(none)"_s);
}

/// One probe; the local server's is of the sample computer.
QFuture<ServerMetrics> probe(const Server& server) {
    static SampleComputer sample;
    return SSHMetricsCollector::collect(server, sample.computer);
}

QString failureOf(const Server& server) {
    return reasonOf(resultOf(probe(server)));
}

QByteArray containerRows() {
    return readFile(QStringLiteral(TARNWICK_FIXTURES "/docker/containers.tsv"));
}

} // namespace

class CollectorTest : public QObject {
    Q_OBJECT

    UserHome home_;
    OpenSshServer host_; ///< answers, and lists the recorded containers

private Q_SLOTS:
    void initTestCase() {
        QVERIFY2(home_.error().isEmpty(), qPrintable(home_.error()));
        const QString error = host_.start();
        QVERIFY2(error.isEmpty(), qPrintable(error));
        ProcessRunner::raiseOpenFileLimit();
    }
    void init() {
        QVERIFY(home_.writeSshFile(u"config"_s, {}));
        QVERIFY(home_.writeSshFile(u"known_hosts"_s, {}));
        QVERIFY(host_.standIns().addDocker(containerRows()));
        QVERIFY(host_.standIns().addRecording(u"top"_s, "%Cpu(s): 51.9 us,  5.3 sy,  0.0 ni, 42.7 id,  0.0 wa\n"));
    }

    void healthyHost() {
        QProcess byHand;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"PATH"_s, host_.standIns().searchPath());
        byHand.setProcessEnvironment(environment);
        byHand.start(u"/bin/sh"_s, {u"-c"_s, ProbeScripts::remote()});
        QVERIFY(byHand.waitForFinished());
        const ServerMetrics expected = parseMetrics(byHand.readAllStandardOutput(), 0);
        QCOMPARE(reasonOf(expected), u"(none)"_s);

        const ServerMetrics metrics = resultOf(probe(serverAt(host_)));
        QCOMPARE(reasonOf(metrics), u"(none)"_s);
        QCOMPARE(metrics.cpuPercent, 58.0);
        QCOMPARE(metrics.gpuPercent, std::nullopt);
        QCOMPARE(metrics.memoryTotalMB, expected.memoryTotalMB);
        QCOMPARE(metrics.diskTotalGB, expected.diskTotalGB);
        QCOMPARE(metrics.containers, expected.containers);
        QCOMPARE(metrics.containers.size(), 6);
        QCOMPARE(metrics.containers[1].name, u"db"_s);
        QVERIFY(metrics.memoryUsedMB > 0 && metrics.diskUsedGB > 0 && metrics.latencyMs > 0);
    }

    void manyContainers() {
        QByteArray rows; // more than a pipe holds
        for (int i = 0; i < 300; ++i)
            rows += u"c%1\tn%1\timage\tUp 2 days\trunning\t%2\n"_s.arg(i).arg(u""_s, 250, u'p').toLatin1();
        QVERIFY(host_.standIns().addDocker(rows));
        const ServerMetrics metrics = resultOf(probe(serverAt(host_)));
        QCOMPARE(reasonOf(metrics), u"(none)"_s);
        QCOMPARE(metrics.containers.size(), 300);
        QCOMPARE(metrics.containers.last().ports.size(), 250);
    }

    void badHosts_data() {
        QTest::addColumn<QString>("behaviour");
        QTest::addColumn<QString>("reason"); // a pattern
        const auto row = [](const char* name, QStringView behaviour, const QString& reason) {
            QTest::newRow(name) << behaviour.toString() << reason;
        };
        const QString unreadable = u"Failed to parse metrics: .+"_s;
        row("greets", HostBehaviour::greets, unreadable);
        row("floods", HostBehaviour::floods, u"Response too large"_s);
        row("loses the connection", HostBehaviour::losesConnection, u"Connection to 127.0.0.1 closed.*"_s);
        row("dies in the line", u"printf '{\"cpu\":12,\"mem_'; kill -9 $$", u"Connection refused / timeout"_s);
        row("says why", u"echo ' no  quota ' >&2; exit 3", u"no  quota"_s);
        row("floods with errors", u"yes broken | head -c 1000000 >&2; exit 4", u"(broken\n)+b?r?o?k?e?"_s);
        row("bash has no such command", u"nonsense", u".*nonsense.*"_s);
    }
    void badHosts() {
        QFETCH(const QString, behaviour);
        QFETCH(const QString, reason);
        OpenSshServer host;
        QVERIFY(host.standIns().addRecording(u"top"_s, {}));
        const QString error = host.start(behaviour);
        QVERIFY2(error.isEmpty(), qPrintable(error));
        const ServerMetrics metrics = resultOf(probe(serverAt(host)));
        const QRegularExpression pattern(QRegularExpression::anchoredPattern(reason),
                                         QRegularExpression::DotMatchesEverythingOption);
        QVERIFY2(pattern.match(reasonOf(metrics)).hasMatch(), qPrintable(reasonOf(metrics).left(200)));
        QCOMPARE(metrics.latencyMs, 0);
        QCOMPARE(metrics.cpuPercent, 0.0);
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
        QVERIFY(failureOf(option) != u"(none)");
        QVERIFY(!QFile::exists(home_.folder() + u"/touched"_s));
        Server unspeakable = serverAt(host_);
        unspeakable.host = u"a\0b"_s; // no argument of a process can hold this
        QVERIFY(failureOf(unspeakable).startsWith(u"Cannot start /usr/bin/ssh: "));
        QVERIFY(!resultOf(SSHMetricsCollector::restartContainer(unspeakable, u"id"_s)));
    }

    void hungHostDelaysNobody() {
        OpenSshServer hung;
        QVERIFY(hung.start(HostBehaviour::hangs).isEmpty());
        ProcessRequest impatient = SSHMetricsCollector::remoteProbeRequest(serverAt(hung));
        impatient.timeLimit = 1s;
        const QFuture<ServerMetrics> waiting = probe(serverAt(hung));
        QList<QFuture<ServerMetrics>> others;
        for (int i = 0; i < 8; ++i)
            others << probe(serverAt(host_));
        for (const auto& other : others)
            QCOMPARE(reasonOf(resultOf(other)), u"(none)"_s);
        QVERIFY(!waiting.isFinished());

        const ProcessOutcome outcome = resultOf(ProcessRunner::run(impatient));
        QCOMPARE(reasonOf(SSHMetricsCollector::remoteMetrics(outcome)), u"No answer within 30 seconds"_s);
        QVERIFY(outcome.elapsed >= 1s);
        QVERIFY(!waiting.isFinished());
    }

    void sharedConnections() {
        QVERIFY(home_.writeSshFile(u"config"_s, "Host *\nControlMaster auto\nControlPersist 20\nControlPath " +
                                                    home_.folder().toUtf8() + "/%p\n"));
        QElapsedTimer clock;
        clock.start();
        const Server server = serverAt(host_);
        QCOMPARE(failureOf(server), u"(none)"_s);
        const QString master = home_.folder() + u"/%1"_s.arg(host_.port());
        QVERIFY(QFile::exists(master)); // the shared connection stays, and holds our pipes open
        QCOMPARE(failureOf(server), u"(none)"_s);
        QVERIFY2(clock.elapsed() < 15'000, qPrintable(QString::number(clock.elapsed())));
        QProcess::execute(u"/usr/bin/ssh"_s, {u"-q"_s, u"-O"_s, u"exit"_s, u"-p"_s, QString::number(server.port),
                                              server.user + u'@' + server.host});
        QTRY_VERIFY(!QFile::exists(master));
    }

    void restartsContainers() {
        const auto restart = [](const Server& server, const QString& id) {
            return resultOf(SSHMetricsCollector::restartContainer(server, id));
        };
        const Server server = serverAt(host_);
        const QString id = u"3f2a9c1d7b44"_s;
        QCOMPARE(failureOf(server), u"(none)"_s); // a probe accepts any host key
        QVERIFY(!restart(server, id));            // a restart accepts known ones only
        QVERIFY(home_.writeSshFile(u"known_hosts"_s, host_.knownHostsLine()));
        QVERIFY(restart(server, id));
        QVERIFY(!restart(server, u"nosuch"_s));
        QCOMPARE(host_.standIns().restarts(), (QStringList{id, u"nosuch"_s}));
    }

    void thisComputer() {
        StandIns tools;
        QVERIFY(tools.addDocker(containerRows()));
        const QByteArray before = qgetenv("PATH");
        qputenv("PATH", tools.searchPath().toLocal8Bit());
        const ServerMetrics metrics = resultOf(probe(localServer()));
        const bool restarted = resultOf(SSHMetricsCollector::restartContainer(localServer(), u"9b1e77a0c2d5"_s));
        const bool restartedOther = resultOf(SSHMetricsCollector::restartContainer(localServer(), u"nosuch"_s));
        qputenv("PATH", before);

        QCOMPARE(reasonOf(metrics), u"(none)"_s);
        QCOMPARE(metrics.uptimeString, u"local"_s);
        QCOMPARE(std::tuple(metrics.cpuPercent, metrics.gpuPercent), std::tuple(12.5, std::optional(8.0)));
        QCOMPARE(std::tuple(metrics.memoryUsedMB, metrics.memoryTotalMB), std::tuple(11'264.0, 16'384.0));
        QCOMPARE(std::tuple(metrics.diskUsedGB, metrics.diskTotalGB), std::tuple(120.3, 460.4));
        QVERIFY(metrics.loadAvg1m >= 0 && metrics.latencyMs >= 0);
        QCOMPARE(metrics.containers.size(), 6);
        QVERIFY(restarted);
        QVERIFY(!restartedOther);
        QCOMPARE(tools.restarts(), (QStringList{u"9b1e77a0c2d5"_s, u"nosuch"_s}));
    }
};

} // namespace tarnwick

QTEST_GUILESS_MAIN(tarnwick::CollectorTest)
#include "tst_collector.moc"
