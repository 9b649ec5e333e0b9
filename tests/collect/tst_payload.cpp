#include "ProbePayload.h"
#include "Rows.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

class PayloadTest : public QObject {
    Q_OBJECT

    static QString nested(int depth) { return QString(depth, u'[') + QString(depth, u']'); }

private Q_SLOTS:
    void readsALine() {
        const ServerMetrics metrics = parseMetrics(
            R"({"cpu":12,"mem_used":512,"mem_total":2048,"disk_used":10.0,"disk_total":40.0,"load":0.50,)"
            R"("uptime":"3 days","containers":[{"id":"1","name":"//db/","image":"i","status":"Up","state":"running"},)"
            R"({"id":"2","name":"a/b","image":"i","status":"é\/\u00e9","state":"exited","ports":"80\/tcp","size":1}]})",
            35);
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

QTEST_GUILESS_MAIN(tarnwick::PayloadTest)
#include "tst_payload.moc"
