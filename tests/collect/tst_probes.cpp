#include "FailureAdvice.h"
#include "ProbePayload.h"
#include "ProbeScripts.h"
#include "Rows.h"
#include "SSHMetricsCollector.h"
#include "SharedConnection.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace tarnwick {

namespace {

using End = ProcessOutcome::End;

Server serverAt(const QString& host, qint64 port, const QString& user, const QString& key = {}) {
    Server server;
    server.host = host;
    server.port = port;
    server.user = user;
    server.customSshKeyPath = key;
    return server;
}

ProcessOutcome outcomeOf(End end, int status, const QByteArray& output, const QByteArray& error = {}) {
    return {end, status, u"No such file"_s, output, error, 12'999'999ns};
}

QString reasonOf(const ServerMetrics& metrics) {
    return metrics.errorMessage.value_or(u"(none)"_s);
}

QString nested(int depth) {
    return QString(depth, u'[') + QString(depth, u']');
}

} // namespace

/// What a probe asks, and how the answer is read.
class ProbesTest : public QObject {
    Q_OBJECT

    const QTemporaryDir runtime_;

private Q_SLOTS:
    void initTestCase() { qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime_.path())); }

    void argumentVectors_data() {
        QTest::addColumn<Server>("server");
        QTest::addColumn<QString>("connection"); // after the fixed options, separated by spaces
        QTest::newRow("plain") << serverAt(u"10.0.0.5"_s, 2222, u"deploy"_s) << u"-p 2222 deploy@10.0.0.5"_s;
        QTest::newRow("key") << serverAt(u"h"_s, 22, u"u"_s, u"~/.ssh/id_ed25519"_s)
                             << u"-p 22 -i %1/.ssh/id_ed25519 u@h"_s.arg(QDir::homePath());
        QTest::newRow("an option for a user")
            << serverAt(u"h"_s, 22, u"-oProxyCommand=x"_s, u"/k"_s) << u"-p 22 -i /k -- -oProxyCommand=x@h"_s;
        QTest::newRow("an option for a host") << serverAt(u"-v"_s, 22, {}) << u"-p 22 @-v"_s;
    }
    /// The folder is for the user alone, and its path short enough for a socket.
    void placesOfSharedConnections() {
        const Server server = serverAt(u"h"_s, 22, u"u"_s, u"/k"_s);
        QStringList paths{SharedConnection::path(server)};
        for (const Server& other : {serverAt(u"h2"_s, 22, u"u"_s, u"/k"_s), serverAt(u"h"_s, 23, u"u"_s, u"/k"_s),
                                    serverAt(u"h"_s, 22, u"v"_s, u"/k"_s), serverAt(u"h"_s, 22, u"u"_s, u"/l"_s),
                                    serverAt(u"h"_s, 22, u"u"_s)})
            paths += SharedConnection::path(other);
        QCOMPARE(QSet(paths.begin(), paths.end()).size(), paths.size());
        QCOMPARE(SharedConnection::path(server), paths.first());
        QCOMPARE(QFile::permissions(QFileInfo(paths.first()).path()).toInt() & 0x7077, 0x7000);
        for (const QString& name : {u"x"_s.repeated(80), u"a\"b"_s, u"a${HOME}"_s, u"a%h"_s}) {
            const QString folder = runtime_.filePath(name);
            QVERIFY(QDir().mkdir(folder) && QFile::setPermissions(folder, QFile::Permissions(0x7000)));
            qputenv("XDG_RUNTIME_DIR", QFile::encodeName(folder));
            QCOMPARE(SharedConnection::path(server), QString());
            QCOMPARE(SSHMetricsCollector::remoteProbeRequest(server, {{}, 60s}).arguments,
                     SSHMetricsCollector::remoteProbeRequest(server).arguments);
        }
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime_.path()));
    }

    void argumentVectors() {
        QFETCH(const Server, server);
        QFETCH(const QString, connection);
        const ProcessRequest probe = SSHMetricsCollector::remoteProbeRequest(server);
        QCOMPARE(probe.executable, u"/usr/bin/ssh"_s);
        const QString options = u"-o BatchMode=yes -o ConnectTimeout=5 "_s;
        const QString trusting = u"-o StrictHostKeyChecking=no -o UserKnownHostsFile=/dev/null -o LogLevel=ERROR "_s;
        QCOMPARE(probe.arguments, (options + trusting + connection).split(u' ') << ProbeScripts::remote());
        QVERIFY(probe.timeLimit == 30s);
        QCOMPARE(probe.standardOutputLimit, 8 << 20);
        QCOMPARE(probe.standardErrorKept, 64 << 10);

        const ProbeManner shared{ProcessRequest::Launch::paced, 60s};
        const QString sharing =
            u"-o ControlMaster=auto -o ControlPath=\"%1\" -o ControlPersist=60 "
            "-o ServerAliveInterval=30 -o ServerAliveCountMax=2 "_s.arg(SharedConnection::path(server));
        QCOMPARE(SSHMetricsCollector::remoteProbeRequest(server, shared).arguments,
                 (options + trusting + sharing + connection).split(u' ') << ProbeScripts::remote());

        const ProcessRequest restart =
            SSHMetricsCollector::actionRequest(server, u"abc123"_s, ContainerAction::restart);
        QCOMPARE(restart.executable, u"/usr/bin/ssh"_s);
        QCOMPARE(restart.arguments, (options + connection).split(u' ') << u"docker restart abc123"_s);
        QVERIFY(restart.timeLimit == 120s);
        QCOMPARE(std::pair(restart.standardOutputLimit, restart.standardErrorKept),
                 std::pair(qint64(0), qint64(64 << 10)));

        Server here;
        here.isLocal = true;
        const ProcessRequest local = SSHMetricsCollector::actionRequest(here, u"abc123"_s, ContainerAction::restart);
        const QString command = u"docker restart abc123 2>/dev/null || ~/.orbstack/bin/docker restart abc123"_s;
        QCOMPARE(QStringList(local.executable) + local.arguments, (QStringList{u"/bin/sh"_s, u"-c"_s, command}));
    }

    void outcomes_data() {
        addRows("ssh-outcomes.json",
                {"end", "status", "output", "error", "reason", "advice"}); // the reason: as it begins
        const QString cutText = QString((64 << 10) - 1, u'x') + QChar(0xc3);
        QTest::newRow("a reason cut within a character")
            << u"exited"_s << u"1"_s << QString() << cutText << u"xxx"_s << QString();
    }
    void outcomes() {
        QFETCH(const QString, end);
        QFETCH(const QString, status);
        QFETCH(const QString, output);
        QFETCH(const QString, error);
        QFETCH(const QString, reason);
        const QStringList ends{u"failed to start"_s, u"timed out"_s, u"output too large"_s, u"exited"_s,
                               u"signalled"_s};
        const QList<End> values{End::failedToStart, End::timedOut, End::outputTooLarge, End::exited, End::signalled};
        const ServerMetrics metrics = SSHMetricsCollector::remoteMetrics(
            outcomeOf(values.at(ends.indexOf(end)), status.toInt(), output.toLatin1(), error.toLatin1()));
        QVERIFY2(reasonOf(metrics).startsWith(reason), qPrintable(reasonOf(metrics)));
        QTEST(failureAdvice(reasonOf(metrics)), "advice");
        QCOMPARE(metrics.latencyMs, metrics.errorMessage ? 0 : 12); // truncated
    }

    void actionFailures() {
        const Server remote;
        for (const auto& [outcome, reason] :
             {std::pair(outcomeOf(End::exited, 1, {}, "Warning: x\n\n Error: no  such \nError: failed\n"),
                        u"Error: no  such"_s),
              {outcomeOf(End::exited, 127, {}, "Welcome!\nsh: 1: docker: not found\n\n"),
               u"sh: 1: docker: not found"_s},
              {outcomeOf(End::exited, 127, {}, "no socket\nsh: 1: /root/.orbstack/bin/docker: not found\n"),
               u"no socket"_s},
              {outcomeOf(End::exited, 0, {}, "Warning: x\n"), QString()},
              {outcomeOf(End::signalled, 9, {}, " \n"), u"docker failed without a reason"_s},
              {outcomeOf(End::exited, 1, {}, "\xff"), u"docker failed without a reason"_s},
              {outcomeOf(End::failedToStart, 0, {}), u"Cannot start /usr/bin/ssh: No such file"_s},
              {outcomeOf(End::timedOut, 9, {}), u"No answer within 120 seconds"_s}})
            QCOMPARE(SSHMetricsCollector::actionFailure(outcome, remote).value_or(QString()), reason);
    }

    void localOutcomes() {
        for (const auto& [outcome, reason] :
             {std::pair(outcomeOf(End::exited, 2, "{\"cpu\":7}\n"), u"(none)"_s),
              {outcomeOf(End::signalled, 2, "{\"cpu\":7}\n"), u"(none)"_s},
              {outcomeOf(End::exited, 0, "\xC2\xA0{}"), u"Failed to parse metrics: "_s},
              {outcomeOf(End::failedToStart, 0, {}), u"Cannot start /bin/sh: No such file"_s},
              {outcomeOf(End::timedOut, 9, "{}"), u"No answer within 30 seconds"_s}}) {
            const ServerMetrics metrics = SSHMetricsCollector::localMetrics(outcome, 2ms);
            QVERIFY2(reasonOf(metrics).startsWith(reason), qPrintable(reasonOf(metrics)));
            QCOMPARE(metrics.latencyMs, metrics.errorMessage ? 0 : 14);
            QCOMPARE(metrics.cpuPercent, metrics.errorMessage ? 0.0 : 7.0);
        }
    }

    void readsALine() {
        const QByteArray line = readFile(QStringLiteral(TARNWICK_FIXTURES "/probelines/full.json"));
        const ServerMetrics metrics = parseMetrics(line, 35);
        QCOMPARE(metrics.errorMessage, std::nullopt);
        QCOMPARE(metrics.cpuPercent, 12.0);
        QCOMPARE(metrics.gpuPercent, std::nullopt);
        QCOMPARE(metrics.memoryPercent(), 25.0);
        QCOMPARE(metrics.diskPercent(), 25.0);
        QCOMPARE(metrics.loadAvg1m, 0.5);
        QCOMPARE(metrics.uptimeString, u"3 days"_s);
        QCOMPARE(metrics.latencyMs, 35);
        QVERIFY(qAbs(Instant::now().secondsSince(metrics.lastChecked)) < 60);
        QCOMPARE(metrics.containers,
                 (QList<ContainerInfo>{{u"1"_s, u"db"_s, u"i"_s, u"Up"_s, u"running"_s, {}},
                                       {u"2"_s, u"a/b"_s, u"i"_s, u"é/é"_s, u"exited"_s, u"80/tcp"_s}}));
    }

    void deepNesting() {
        for (const QByteArray& begin : {QByteArray(), QByteArray(R"({"containers":)")})
            QCOMPARE(parseMetrics(begin + QByteArray(8'000'000, '['), 1).errorMessage->left(48),
                     u"Failed to parse metrics: too deeply nested docum"_s);
    }

    void accepts_data() {
        addRows("probelines/accepted.json", {"line", "cpu"});
        QTest::newRow("deep, unknown") << u"{\"cpu\":5,\"x\":"_s + nested(900) + u'}' << u"5"_s;
    }
    void accepts() {
        QFETCH(const QString, line);
        QFETCH(const QString, cpu);
        const ServerMetrics metrics = parseMetrics(line.toLatin1(), 7);
        QCOMPARE(metrics.errorMessage, std::nullopt);
        QCOMPARE(metrics.cpuPercent, cpu.toDouble());
        QCOMPARE(metrics.gpuPercent, std::nullopt);
        QCOMPARE(metrics.latencyMs, 7);
    }

    void rejects_data() {
        addRows("probelines/rejected.json", {"line", "hint"}); // the hint: a word of the description
        QTest::newRow("too deep") << u"{\"x\":"_s + nested(100'000) + u'}' << u"deep"_s;
    }
    void rejects() {
        QFETCH(const QString, line);
        QFETCH(const QString, hint);
        const ServerMetrics metrics = parseMetrics(line.toLatin1(), 35);
        const QString reason = metrics.errorMessage.value_or(QString());
        QVERIFY2(reason.startsWith(u"Failed to parse metrics: "), qPrintable(reason));
        QVERIFY2(reason.contains(hint), qPrintable(reason));
        QVERIFY2(reason.size() > 27 && reason.size() < 120 && !reason.contains(u'\n'), qPrintable(reason));
        ServerMetrics expected = ServerMetrics::offline(reason);
        expected.lastChecked = metrics.lastChecked;
        QCOMPARE(metrics, expected);
    }
};

} // namespace tarnwick

QTEST_GUILESS_MAIN(tarnwick::ProbesTest)
#include "tst_probes.moc"
