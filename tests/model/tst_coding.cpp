#include "Coding.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

const QByteArray validServer = R"({"id":"0b4c8d0e-6f3a-4b52-9c1d-2e5f60718293","name":"web","host":"10.0.0.7",
    "user":"root","port":22,"isLocal":false,"dockerEnabled":true,"customSshKeyPath":"\/k","isEnabled":true,"metrics":{
    "cpuPercent":1.5,"gpuPercent":2,"memoryUsedMB":3,"memoryTotalMB":4,"diskUsedGB":5,"diskTotalGB":6,
    "uptimeString":"up 1 day","loadAvg1m":0.1,"latencyMs":12,"lastChecked":781234567.25,"errorMessage":"e",
    "containers":[{"id":"c","name":"/web/","image":"i","status":"s","state":"running","ports":"80/tcp"}]}})";

QByteArray inArray(const QByteArray& server) {
    return '[' + server + ']';
}

/// The valid server with the first `before` replaced; there must be one.
QByteArray changed(const QByteArray& before, const QByteArray& after) {
    QByteArray text = validServer;
    const auto at = text.indexOf(before);
    Q_ASSERT(at >= 0);
    return inArray(text.replace(at, before.size(), after));
}

Server readServer(const QByteArray& json) {
    const auto decoded = decodeServers(json);
    if (const auto* error = std::get_if<DecodingError>(&decoded))
        qWarning().noquote() << error->description;
    const auto* servers = std::get_if<QList<Server>>(&decoded);
    return servers ? servers->value(0) : Server();
}

} // namespace

class CodingTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void rewrittenFileIsEqualInContent() {
        const QByteArray json = inArray(validServer);
        const QByteArray written = encodeServers(std::get<QList<Server>>(decodeServers(json))).value();
        QByteArray expected = json;
        expected.replace("0b4c8d0e-6f3a-4b52-9c1d-2e5f60718293", "0B4C8D0E-6F3A-4B52-9C1D-2E5F60718293");
        QCOMPARE(QJsonDocument::fromJson(written), QJsonDocument::fromJson(expected));
        QVERIFY(written.contains(R"("customSshKeyPath":"\/k")"));
        QVERIFY(written.contains(R"("ports":"80\/tcp")"));
        QVERIFY(!written.contains('\n') && !written.contains(": "));
    }

    void absentOptionalsAreLeftOut() {
        const QByteArray json = encodeServers({Server()}).value();
        QCOMPARE(QJsonDocument::fromJson(json).array().at(0).toObject().size(), 8);
        QCOMPARE(readServer(json), Server());
    }

    void unreadableFleets_data() {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QByteArray>("reason");
        const auto row = [](const char* name, const QByteArray& json, const QByteArray& reason = {}) {
            QTest::newRow(name) << json << reason;
        };
        row("empty file", "", "expected an array");
        row("object", validServer, "expected an array");
        row("cut short", inArray(validServer).chopped(1));
        row("cut in the server", inArray(validServer.chopped(9)));
        row("trailing text", inArray(validServer) + "x");
        row("second array", inArray(validServer) + "[]");
        row("one bracket too many", inArray(validServer) + "]");
        row("trailing comma", '[' + validServer + ",]");
        row("element is a number", "[1]");
        row("element is an array", "[[]]", "[0] expected an object");
        row("second element is bad", '[' + validServer + ",{}]", "[1] id: missing");
        row("missing isEnabled", changed(R"("isEnabled":true,)", ""), "[0] isEnabled: missing");
        row("missing dockerEnabled", changed(R"("dockerEnabled":true,)", ""), "[0] dockerEnabled: missing");
        row("missing latencyMs", changed(R"("latencyMs":12,)", ""), "[0] metrics: latencyMs: missing");
        row("missing lastChecked", changed(R"("lastChecked":781234567.25,)", ""), "[0] metrics: lastChecked: missing");
        row("null for a required key", changed("\"web\"", "null"), "[0] name: expected a string");
        row("number for a string", changed("\"web\"", "1"), "[0] name: expected a string");
        row("number for a boolean", changed(R"("isLocal":false)", R"("isLocal":0)"), "isLocal: expected true or false");
        row("boolean for a number", changed(":1.5", ":true"), "[0] metrics: cpuPercent: expected a number");
        row("string for an integer", changed(":22", ":\"22\""), "port: expected an integer");
        row("integer with a fraction", changed(":22", ":5.5"), "port: expected an integer");
        row("integer beyond 64 bits", changed(":22", ":9223372036854775808"), "port: expected an integer");
        row("far too large integer", changed(":22", ":1e30"), "port: expected an integer");
        row("number beyond a double", changed(":1.5", ":1e400"), "illegal number");
        row("braces about the id",
            changed("0b4c8d0e-6f3a-4b52-9c1d-2e5f60718293", "{0b4c8d0e-6f3a-4b52-9c1d-2e5f60718293}"),
            "[0] id: expected a UUID");
        row("text after the id", changed("60718293\"", "60718293-1\""), "[0] id: expected a UUID");
        row("no hyphens in the id", changed("0b4c8d0e-6f3a-4b52-", "0b4c8d0e6f3a4b52"), "[0] id: expected a UUID");
        row("container without ports", changed(R"(,"ports":"80/tcp")", ""),
            "[0] metrics: containers: [0] ports: missing");
        row("wrong type in an optional", changed(R"("\/k")", "7"), "customSshKeyPath: expected a string");
        row("not UTF-8", changed("\"web\"", "\"\xff\""));
    }
    void unreadableFleets() {
        QFETCH(QByteArray, json);
        QFETCH(QByteArray, reason);
        const auto decoded = decodeServers(json);
        QVERIFY(std::holds_alternative<DecodingError>(decoded));
        const QString description = std::get<DecodingError>(decoded).description;
        QVERIFY2(description.contains(QString::fromUtf8(reason)), qPrintable(description));
        QVERIFY(!description.isEmpty());
    }

    void readableOddities() {
        const Server expected = readServer(inArray(validServer));
        for (const QByteArray& json : {
                 "\xef\xbb\xbf \n" + inArray(validServer) + "\n\n",
                 changed("\"port\"", "\"x\":{\"y\":[\"]}\\\\\\\",[{\"]},\"port\""), // brackets and quotes in strings
                 changed("\"port\"", R"("port":7,"port")"),                         // the last of two counts
                 changed(":22", ":22.0"),
                 changed(":22", ":2.2e1"),
                 changed("/web/", R"(\/web\/)"),
                 changed("0b4c8d0e", "0B4C8D0E"),
             })
            QCOMPARE(readServer(json), expected);
    }

    void emptyFleet() {
        QCOMPARE(encodeServers({}).value(), "[]"_ba);
        QVERIFY(std::get<QList<Server>>(decodeServers(" [ ] ")).isEmpty());
    }

    void integersStayExact() {
        using Limits = std::numeric_limits<qint64>;
        for (const qint64 number : {Limits::max(), Limits::min(), qint64{0}, qint64{9007199254740993}, qint64{-1}}) {
            const Server server = readServer(changed(":22", ':' + QByteArray::number(number)));
            QCOMPARE(server.port, number);
            QVERIFY(encodeServers({server})->contains("\"port\":" + QByteArray::number(number) + ','));
        }
    }

    void doublesStayExact() {
        for (const auto& [number, text] : {std::pair(0.1, "0.1"),
                                           {5, "5"},
                                           {5e-324, "5e-324"},
                                           {1.7976931348623157e308, "1.7976931348623157e+308"},
                                           {9223372036854775808.0, "9"}, // just beyond 64 bits
                                           {781234567.12345679, "781234567.1"}}) {
            Server server = readServer(inArray(validServer));
            server.metrics->loadAvg1m = number;
            const QByteArray json = encodeServers({server}).value();
            QVERIFY2(json.contains("\"loadAvg1m\":"_ba + text), json.constData());
            QCOMPARE(readServer(json).metrics->loadAvg1m, number);
        }
    }

    void numbersThatAreNotFiniteAreNotWritten() {
        const double inf = std::numeric_limits<double>::infinity();
        for (const double number : {inf, -inf, std::numeric_limits<double>::quiet_NaN()}) {
            Server server = readServer(inArray(validServer));
            server.metrics->gpuPercent = number;
            QVERIFY(!encodeServers({Server(), server}).has_value());
            AppSettings settings;
            settings.alertRamThresholdPercent = number;
            QVERIFY(!encodeSettings(settings).has_value());
        }
    }

    void anyTextReadsBackAsItWas() {
        const QString text = u"\"\\/\b\t\n\r\x1f\x7f\u2028 \u00e9 \U0001F600"_s + QChar(0) + QChar(0xd800) + u'x' +
                             QChar(0xdc00) + QChar(0xd83d); // lone surrogates: a host may print anything
        Server server = readServer(inArray(validServer));
        server.name = text;
        const QByteArray json = encodeServers({server}).value();
        QCOMPARE(readServer(json).name, text);
        QCOMPARE(QJsonDocument::fromJson(json).array().at(0)["name"_L1].toString(), text); // and by another reader
    }

    void settingsReadTheirDefaults() {
        const Instant before = Instant::now();
        const auto settings = std::get<AppSettings>(decodeSettings(R"({"showMenuBarLabel":null,"x":1})"));
        AppSettings expected;
        expected.firstLaunchDate = settings.firstLaunchDate;
        QCOMPARE(settings, expected);
        QVERIFY(settings.firstLaunchDate.secondsSince(before) >= 0);
    }

    void settingsRoundTrip() {
        AppSettings settings;
        settings.refreshIntervalSeconds = std::numeric_limits<qint64>::min();
        settings.alertDiskThresholdPercent = 80.1;
        settings.alertRamThresholdPercent = -1e300;
        settings.showMenuBarLabel = settings.soundAlerts = false;
        settings.launchAtLogin = settings.hasCompletedOnboarding = true;
        for (const MenuBarItemSet& pins : {MenuBarItemSet(), pins(PinPreset::All)}) {
            settings.pinnedMenuBarItems = pins;
            const QByteArray json = encodeSettings(settings).value();
            QCOMPARE(QJsonDocument::fromJson(json).object().size(), 9);
            QCOMPARE(std::get<AppSettings>(decodeSettings(json)), settings);
        }
    }

    void wordsOfThePins() {
        AppSettings settings;
        settings.pinnedMenuBarItems = pins(PinPreset::All);
        QVERIFY(encodeSettings(settings)->contains(R"("pinnedMenuBarItems":["socTemp","peakTemp","ssdTemp","cpuUsage",)"
                                                   R"("gpuUsage","ramUsage","serverStatus"])"));
    }

    void duplicatePinsCollapse() {
        const auto settings =
            std::get<AppSettings>(decodeSettings(R"({"pinnedMenuBarItems":["cpuUsage","cpuUsage"]})"));
        QCOMPARE(settings.pinnedMenuBarItems, MenuBarItemSet{MenuBarItem::cpuUsage});
    }

    void unreadableSettings() {
        for (const char* json : {"", "[]", R"({"pinnedMenuBarItems":["cpuUsage","CPUUsage"]})",
                                 R"({"pinnedMenuBarItems":["cpuUsage",null]})", R"({"pinnedMenuBarItems":"cpuUsage"})",
                                 R"({"soundAlerts":1})", R"({"refreshIntervalSeconds":30.5})",
                                 R"({"firstLaunchDate":"2024-01-01T00:00:00Z"})"})
            QVERIFY2(std::holds_alternative<DecodingError>(decodeSettings(json)), json);
    }
};

QTEST_GUILESS_MAIN(CodingTest)
#include "tst_coding.moc"
