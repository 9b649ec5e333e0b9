#include "ProbeScripts.h"
#include "SSHMetricsCollector.h"

#include <QDir>
#include <QTest>

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
    return {end, status, u"No such file or directory"_s, output, error, 12'999'999ns};
}

QString reasonOf(const ServerMetrics& metrics) {
    return metrics.errorMessage.value_or(u"(none)"_s);
}

} // namespace

class RequestsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void argumentVectors_data() {
        QTest::addColumn<Server>("server");
        QTest::addColumn<QString>("connection"); // after the fixed options, separated by spaces
        const QString home = QDir::homePath();
        QTest::newRow("plain") << serverAt(u"10.0.0.5"_s, 2222, u"deploy"_s) << u"-p 2222 deploy@10.0.0.5"_s;
        QTest::newRow("key") << serverAt(u"h"_s, 22, u"u"_s, u"~/.ssh/id_ed25519"_s)
                             << u"-p 22 -i %1/.ssh/id_ed25519 u@h"_s.arg(home);
        QTest::newRow("an option for a user")
            << serverAt(u"h"_s, 22, u"-oProxyCommand=x"_s, u"/k"_s) << u"-p 22 -i /k -- -oProxyCommand=x@h"_s;
        QTest::newRow("an option for a host") << serverAt(u"-v"_s, 22, {}) << u"-p 22 @-v"_s;
    }
    void argumentVectors() {
        QFETCH(const Server, server);
        QFETCH(const QString, connection);
        const ProcessRequest probe = SSHMetricsCollector::remoteProbeRequest(server);
        QCOMPARE(probe.executable, u"/usr/bin/ssh"_s);
        QCOMPARE(probe.arguments.first(10).join(u' '),
                 u"-o BatchMode=yes -o ConnectTimeout=5 -o StrictHostKeyChecking=no -o UserKnownHostsFile=/dev/null "
                 "-o LogLevel=ERROR"_s);
        QCOMPARE(probe.arguments.sliced(10), connection.split(u' ') << ProbeScripts::remote());
        QVERIFY(probe.timeLimit == 30s);
        QCOMPARE(probe.standardOutputLimit, 8 << 20);
        QCOMPARE(probe.standardErrorKept, 64 << 10);

        const ProcessRequest restart = SSHMetricsCollector::restartRequest(server, u"abc123"_s);
        QCOMPARE(restart.executable, u"/usr/bin/ssh"_s);
        QCOMPARE(restart.arguments, u"-o BatchMode=yes -o ConnectTimeout=5 %1"_s.arg(connection).split(u' ')
                                        << u"docker restart abc123"_s);
        QVERIFY(restart.timeLimit == 120s);
        QCOMPARE(restart.standardOutputLimit + restart.standardErrorKept, 0);

        Server here;
        here.isLocal = true;
        const ProcessRequest local = SSHMetricsCollector::restartRequest(here, u"abc123"_s);
        QCOMPARE(local.executable, u"/bin/sh"_s);
        QCOMPARE(
            local.arguments,
            (QStringList{u"-c"_s, u"docker restart abc123 2>/dev/null || ~/.orbstack/bin/docker restart abc123"_s}));
    }

    void outcomes_data() {
        QTest::addColumn<ProcessOutcome>("outcome");
        QTest::addColumn<QString>("reason"); // as it begins
        const auto row = [](const char* name, const ProcessOutcome& outcome, const QString& reason) {
            QTest::newRow(name) << outcome << reason;
        };
        const QByteArray line = "{\"cpu\":1}";
        row("a line", outcomeOf(End::exited, 0, line, "a warning"), u"(none)"_s);
        row("white space around it", outcomeOf(End::exited, 0, "\n\xC2\xA0\t" + line + "\xE2\x80\xA8\n"), u"(none)"_s);
        row("not launched", outcomeOf(End::failedToStart, 0, {}),
            u"Cannot start /usr/bin/ssh: No such file or directory"_s);
        row("timed out", outcomeOf(End::timedOut, 0, line, "x"), u"No answer within 30 seconds"_s);
        row("flood", outcomeOf(End::outputTooLarge, 0, line, "x"), u"Response too large"_s);
        row("a reason", outcomeOf(End::exited, 255, line, "\r\n ssh: \xC3\xA9\nx \r\n"), u"ssh: é\nx"_s);
        row("no reason", outcomeOf(End::exited, 1, line, " \r\n\t"), u"Connection refused / timeout"_s);
        row("not UTF-8", outcomeOf(End::exited, 255, line, "caf\xe9"), u"SSH exited with code 255"_s);
        row("not UTF-8, killed", outcomeOf(End::signalled, 15, line, "\xc3"), u"SSH exited with code 15"_s);
        row("killed", outcomeOf(End::signalled, 9, line), u"Connection refused / timeout"_s);
        row("a reason cut within a character", outcomeOf(End::exited, 1, {}, QByteArray((64 << 10) - 1, 'x') + "\xc3"),
            u"xxx"_s);
        row("not UTF-8 but well", outcomeOf(End::exited, 0, "{\"uptime\":\"\xe9\"}"),
            u"Invalid response from server"_s);
        row("nothing printed", outcomeOf(End::exited, 0, {}), u"Failed to parse metrics: "_s);
        row("byte order mark", outcomeOf(End::exited, 0, "\xEF\xBB\xBF" + line), u"Failed to parse metrics: "_s);
    }
    void outcomes() {
        QFETCH(const ProcessOutcome, outcome);
        QFETCH(const QString, reason);
        const ServerMetrics metrics = SSHMetricsCollector::remoteMetrics(outcome);
        QVERIFY2(reasonOf(metrics).startsWith(reason), qPrintable(reasonOf(metrics)));
        QCOMPARE(metrics.latencyMs, metrics.errorMessage ? 0 : 12); // truncated
    }

    void localOutcomes() {
        const auto metricsOf = [](const ProcessOutcome& outcome) {
            return SSHMetricsCollector::localMetrics(outcome, 2ms);
        };
        for (const End end : {End::exited, End::signalled}) {
            const ServerMetrics metrics = metricsOf(outcomeOf(end, 2, "{\"cpu\":7}\n"));
            QCOMPARE(metrics.cpuPercent, 7.0);
            QCOMPARE(metrics.latencyMs, 14);
        }
        QVERIFY(reasonOf(metricsOf(outcomeOf(End::exited, 0, "\xC2\xA0{}"))).startsWith(u"Failed to parse metrics: "));
        QCOMPARE(reasonOf(metricsOf(outcomeOf(End::failedToStart, 0, {}))),
                 u"Cannot start /bin/sh: No such file or directory"_s);
        QCOMPARE(reasonOf(metricsOf(outcomeOf(End::timedOut, 9, "{}"))), u"No answer within 30 seconds"_s);
    }
};

} // namespace tarnwick

QTEST_GUILESS_MAIN(tarnwick::RequestsTest)
#include "tst_requests.moc"
