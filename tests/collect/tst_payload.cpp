#include "ProbePayload.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {
/// A probe line with one container: it has this status, and `more` after its required members.
QByteArray lineWithStatus(const QByteArray& status, const QByteArray& more = ",\"ports\":\"\"") {
    return "{\"cpu\":1,\"containers\":[{\"id\":\"a\",\"name\":\"b\",\"image\":\"c\",\"state\":\"running\",\"status\":"
           "\"" +
           status + "\"" + more + "}]}\n";
}
} // namespace

class PayloadTest : public QObject {
    Q_OBJECT

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
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<double>("cpu");
        const auto row = [](const char* name, const QByteArray& line, double cpu) {
            QTest::newRow(name) << line << cpu;
        };
        row("empty object, white space", " \t\r\n{}\n\n", 0);
        row("null is absent", R"({"cpu":null,"gpu":null,"uptime":null,"containers":null,"load":null})", 0);
        row("unknown keys", R"({"cpu":2,"temp":{"a":[true]},"CPU":"x"})", 2);
        row("any range", R"({"cpu":-1.5e3})", -1500);
        row("more digits than a double has", R"({"cpu":123456789012345678901234})", 1.2345678901234568e23);
        row("the last of two", R"({"cpu":"x","cpu":3})", 3);
        row("escapes", "{\"cpu\":4,\"uptime\":\"\\\"\\\\\\/\\b\\f\\n\\r\\t\\u0041.\"}", 4);
        row("a container's null ports", lineWithStatus("Up", ",\"ports\":null"), 1);
        row("deep, unknown", "{\"cpu\":5,\"x\":" + QByteArray(900, '[') + QByteArray(900, ']') + "}", 5);
    }
    void accepts() {
        QFETCH(const QByteArray, line);
        const ServerMetrics metrics = parseMetrics(line, 7);
        QCOMPARE(metrics.errorMessage, std::nullopt);
        QTEST(metrics.cpuPercent, "cpu");
        QCOMPARE(metrics.gpuPercent, std::nullopt);
        QCOMPARE(metrics.latencyMs, 7);
    }

    void rejects_data() {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QString>("hint"); // a word of the description
        const auto row = [](const char* name, const QByteArray& line, const QString& hint = {}) {
            QTest::newRow(name) << line << hint;
        };
        row("nothing", {});
        row("white space", " \n");
        row("an array", "[]", u"object"_s);
        row("a number", "5");
        row("null", "null");
        row("banner before", "Welcome to db1\n{\"cpu\":1}\n");
        row("text after", "{\"cpu\":1}\nbye\n");
        row("two lines", "{\"cpu\":1}\n{\"cpu\":1}\n");
        row("cut off", R"({"cpu":1,"mem_used":)");
        row("NUL after", QByteArray("{}\0", 3));
        row("NUL in a string", QByteArray("{\"uptime\":\"a\0b\"}", 16), u"control"_s);
        row("byte order mark", "\xEF\xBB\xBF{}", u"byte order mark"_s);
        row("no break space around", "\xC2\xA0{}");
        row("string for a number", R"({"cpu":"12"})", u"cpu"_s);
        row("object for an array", R"({"containers":{}})", u"containers"_s);
        row("empty load", R"({"cpu":1,"load":,"uptime":"local"})");
        row("too large", R"({"cpu":1e400})", u"number"_s);
        row("too large, negative", R"({"load":-1e999})", u"number"_s);
        row("nan", R"({"cpu":nan})");
        for (const char* number : {"1.", ".5", "-.5", "1.e5", "01", "+1", "-", "1e", "0x1F", "1,5"})
            row(number, QByteArray("{\"cpu\":") + number + "}");
        row("quote in a status", lineWithStatus(R"(Up "for" 3 days)"));
        row("backslash in a status", lineWithStatus(R"(Up C:\data)"), u"escape"_s);
        row("cut escape", lineWithStatus(R"(\u12)"), u"escape"_s);
        row("tab in a status", lineWithStatus("Up\t3"), u"control"_s);
        row("not UTF-8", lineWithStatus("caf\xe9"), u"UTF"_s);
        row("a container's ports", lineWithStatus("Up", ",\"ports\":80"), u"ports"_s);
        row("a container without state", R"({"containers":[{"id":"","name":"","image":"","status":"","ports":""}]})",
            u"state"_s);
        row("a container's null name", R"({"containers":[{"id":"","name":null,"image":"","status":"","state":""}]})",
            u"name"_s);
        row("too deep", "{\"x\":" + QByteArray(100'000, '[') + QByteArray(100'000, ']') + "}", u"deep"_s);
    }
    void rejects() {
        QFETCH(const QByteArray, line);
        QFETCH(const QString, hint);
        const ServerMetrics metrics = parseMetrics(line, 35);
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
