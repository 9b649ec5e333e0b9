#include "Coding.h"
#include "Rows.h"

#include <QJsonObject>

#include <limits>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

const QByteArray validServer = readFile(QStringLiteral(TARNWICK_FIXTURES "/fleets/server.json"));
const QByteArray validFleet = '[' + validServer + ']';

/// The JSON text of the row of data: the valid server in its frame, with one part replaced.
QByteArray rowsJson() {
    QFETCH(const QString, frame);
    QFETCH(const QString, before);
    QFETCH(const QString, after);
    QByteArray json = frame.toLatin1().replace("%1", validServer);
    return json.replace(before.toLatin1(), after.toLatin1());
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
        const QByteArray written = encodeServers({readServer(validFleet)}).value();
        QByteArray expected = validFleet;
        expected.replace("0b4c8d0e-6f3a-4b52-9c1d-2e5f60718293", "0B4C8D0E-6F3A-4B52-9C1D-2E5F60718293");
        QCOMPARE(QJsonDocument::fromJson(written), QJsonDocument::fromJson(expected));
        QVERIFY(written.contains(R"("customSshKeyPath":"\/k")") && written.contains(R"("ports":"80\/tcp")"));
        QVERIFY(!written.contains('\n') && !written.contains(": "));
    }

    void nothingIsWrittenForWhatIsAbsent() {
        QCOMPARE(encodeServers({}).value(), "[]"_ba);
        QVERIFY(std::get<QList<Server>>(decodeServers(" [ ] ")).isEmpty());
        const QByteArray json = encodeServers({Server()}).value();
        QCOMPARE(QJsonDocument::fromJson(json).array().at(0).toObject().size(), 8);
        QCOMPARE(readServer(json), Server());
    }

    void unreadableFleets_data() { addRows("fleets/unreadable.json", {"frame", "before", "after", "reason"}); }
    void unreadableFleets() {
        QFETCH(const QString, reason);
        const auto decoded = decodeServers(rowsJson());
        QVERIFY(std::holds_alternative<DecodingError>(decoded));
        const QString description = std::get<DecodingError>(decoded).description;
        QVERIFY2(!description.isEmpty() && description.contains(reason), qPrintable(description));
    }

    void readableOddities_data() { addRows("fleets/odd.json", {"frame", "before", "after"}); }
    void readableOddities() {
        QVERIFY(rowsJson() != validFleet);
        QCOMPARE(readServer(rowsJson()), readServer(validFleet));
    }

    void integersStayExact() {
        using Limits = std::numeric_limits<qint64>;
        for (const qint64 number : {Limits::max(), Limits::min(), qint64{0}, qint64{9007199254740993}, qint64{-1}}) {
            const Server server = readServer(QByteArray(validFleet).replace(":22", ':' + QByteArray::number(number)));
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
            Server server = readServer(validFleet);
            server.metrics->loadAvg1m = number;
            const QByteArray json = encodeServers({server}).value();
            QVERIFY2(json.contains("\"loadAvg1m\":"_ba + text), json.constData());
            QCOMPARE(readServer(json).metrics->loadAvg1m, number);
        }
    }

    void numbersThatAreNotFiniteAreNotWritten() {
        const double inf = std::numeric_limits<double>::infinity();
        for (const double number : {inf, -inf, std::numeric_limits<double>::quiet_NaN()}) {
            Server server = readServer(validFleet);
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
        Server server = readServer(validFleet);
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
        const auto pinnedTwice = decodeSettings(R"({"pinnedMenuBarItems":["cpuUsage","cpuUsage"]})");
        QCOMPARE(std::get<AppSettings>(pinnedTwice).pinnedMenuBarItems, MenuBarItemSet{MenuBarItem::cpuUsage});
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
        settings.shareConnections = false; // not stored before it is chosen
        QCOMPARE(std::get<AppSettings>(decodeSettings(encodeSettings(settings).value())), settings);
        QVERIFY(encodeSettings(settings)->contains(R"("pinnedMenuBarItems":["socTemp","peakTemp","ssdTemp","cpuUsage",)"
                                                   R"("gpuUsage","ramUsage","serverStatus"])"));
    }

    void unreadableSettings() {
        for (const char* json : {"", "[]", R"({"pinnedMenuBarItems":["cpuUsage","CPUUsage"]})",
                                 R"({"pinnedMenuBarItems":["cpuUsage",null]})", R"({"pinnedMenuBarItems":"cpuUsage"})",
                                 R"({"soundAlerts":1})", R"({"refreshIntervalSeconds":30.5})",
                                 R"({"firstLaunchDate":"2024-01-01T00:00:00Z"})", R"({"pinnedMenuBarItems":["\n"]})"}) {
            const auto decoded = decodeSettings(json);
            const auto* const error = std::get_if<DecodingError>(&decoded);
            QVERIFY2(error != nullptr && !error->description.contains(u'\n'), json);
        }
    }

    void serversInASetAreTheirContents() {
        Server server;
        server.metrics = ServerMetrics();
        server.metrics->containers = {ContainerInfo()};
        QSet<Server> set{server};
        QVERIFY(set.contains(Server(server)));
        server.metrics->containers[0].state = u"exited"_s;
        QVERIFY(!set.contains(server) && qHash(server) != qHash(*set.cbegin()));
        server = *set.cbegin();
        server.metrics->lastChecked = Instant{1};
        QVERIFY(!set.contains(server) && qHash(server) != qHash(*set.cbegin()));
    }

    void healthStatusFromItsWord() {
        QCOMPARE(serverHealthStatusFromRawValue(u"checking"), ServerHealthStatus::checking);
        QCOMPARE(serverHealthStatusFromRawValue(u"Checking"), std::nullopt);
    }
};

QTEST_GUILESS_MAIN(CodingTest)
#include "tst_coding.moc"
