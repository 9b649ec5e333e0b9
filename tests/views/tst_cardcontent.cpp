#include "Fixture.h"
#include "PopoverContent.h"
#include "card/CardMenu.h"
#include "card/ServerCardContent.h"
#include "controls/DisplayText.h"
#include "macos/MacWords.h"

#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace tarnwick;
using enum ColorRole::Role;

namespace {

Server remote() {
    Server server;
    server.id = QUuid::createUuid();
    server.user = u"deploy"_s;
    server.host = u"192.0.2.10"_s;
    server.port = 2222;
    return server;
}

ServerMetrics healthy(double diskUsedGB = 42.5) {
    ServerMetrics metrics;
    metrics.cpuPercent = 24.5;
    metrics.memoryUsedMB = 3280;
    metrics.memoryTotalMB = 8192;
    metrics.diskUsedGB = diskUsedGB;
    metrics.diskTotalGB = 120;
    return metrics;
}

ContainerInfo container(const QString& id, const QString& state) {
    return {id, u"name-"_s + id, u"image"_s, u"Up 2 days"_s, state, {}};
}

struct CardCase {
    QString name;
    std::optional<ServerMetrics> metrics = {};
    CardState state = {};
    bool isLocal = false;
    bool isEnabled = true;
};

QString nameOf(ColorRole::Role role) {
    return QString::fromLatin1(QMetaEnum::fromType<ColorRole::Role>().valueToKey(static_cast<int>(role)));
}

/// All that the case's card shows.
QString shown(const CardCase& example) {
    Server server = remote();
    server.name = example.name;
    server.metrics = example.metrics;
    server.isLocal = example.isLocal;
    server.isEnabled = example.isEnabled;
    const ServerCardContent card = serverCardContent(server, example.state, macWords);
    QStringList texts{nameOf(card.dotRole), card.statusWord,        card.address,         card.pauseHelp,
                      card.pauseSymbol,     nameOf(card.pauseRole), card.temperatureText, card.latencyText,
                      card.notice,          card.errorText,         card.errorAdvice,     card.containersText,
                      card.expandText,      card.expandSymbol};
    for (const MetricBarContent& bar : card.bars)
        texts += bar.label + u' ' + bar.detail;
    for (const ContainerRowContent& row : card.containers)
        texts += row.id + u' ' + row.stateWord;
    for (const auto& [flag, word] : {std::pair(card.isEnabled, u"isEnabled"_s),
                                     {card.isChecking, u"isChecking"_s},
                                     {card.hasFailed, u"hasFailed"_s},
                                     {card.hasHardwareRow, u"hasHardwareRow"_s},
                                     {card.isExpanded, u"isExpanded"_s}})
        if (flag)
            texts += word;
    texts.removeAll(QString());
    return card.name + u": "_s + texts.join(u", "_s);
}

/// The lines of a menu and their symbols.
QStringList lines(const QList<CardMenuEntry>& menu) {
    QStringList texts;
    for (const CardMenuEntry& entry : menu)
        texts += entry.isDivider() ? u"-"_s : entry.text + u" | "_s + entry.symbol;
    return texts;
}

} // namespace

class CardContentTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void finding() {
        Server server = remote();
        server.name = u"Z\u00fcrich Stra\u00dfe"_s;
        server.metrics = healthy();
        server.metrics->containers = {container(u"a"_s, u"running"_s)};
        server.metrics->containers[0].image = u"registry.example/shop:2.4"_s;
        Server critical = server;
        critical.metrics->cpuPercent = 99;
        Server offline = server;
        offline.metrics = ServerMetrics::offline({});
        Server unknown = server;
        unknown.metrics.reset();
        Server paused = offline;
        paused.isEnabled = false;
        const QList<Server> states{server, critical, offline, unknown, paused};
        for (const QString& line : fixtureLines(u"views/finding.txt"_s).sliced(1)) {
            QString found = line.section(u'|', 0, 0) + u'|';
            const FleetFilter filter(line.section(u'|', 0, 0));
            for (int state = 0; state < states.size(); ++state)
                if (filter.matches(states[state]))
                    found += QString::number(state);
            QCOMPARE(found, line);
        }
        QVERIFY(FleetFilter(u"shop"_s, FleetGroup::warning).matches(critical));
        QVERIFY(!FleetFilter(u"shop"_s, FleetGroup::warning).matches(server));
    }

    void cards() {
        ServerMetrics withGpu = healthy();
        withGpu.gpuPercent = 0;
        ServerMetrics withContainers = healthy();
        withContainers.containers = {container(u"a"_s, u"Running"_s), container(u"b"_s, u"exited"_s),
                                     container(u"a"_s, u"RUNNING"_s)};
        ServerMetrics halves; // go to the even digit, as printf rounds them
        halves.cpuPercent = 0.25;
        halves.memoryUsedMB = 256;
        halves.memoryTotalMB = 2048;
        const CardState warm{.avgSoc = 41.5, .gpuPercent = 8};
        const CardState expanded{.isExpanded = true, .avgSoc = 41};
        const CardCase cases[] = {
            {.name = u"paused"_s, .metrics = withContainers, .state = expanded, .isLocal = true, .isEnabled = false},
            {.name = u"never probed"_s},
            {.name = u"failed"_s, .metrics = ServerMetrics::offline(u"first\nsecond"_s), .isLocal = true},
            {.name = u"key refused"_s, .metrics = ServerMetrics::offline(u"u@h: Permission denied (publickey)."_s)},
            {.name = u"healthy"_s, .metrics = healthy(), .state = warm},
            {.name = u"disk rather full"_s, .metrics = healthy(100)},
            {.name = u"disk full"_s, .metrics = healthy(118)},
            {.name = u"idle GPU"_s, .metrics = withGpu, .state = warm},
            {.name = u"local, idle GPU, no sensors"_s, .metrics = withGpu, .state = {.gpuPercent = 8}, .isLocal = true},
            {.name = u"local, no GPU"_s, .metrics = withGpu, .isLocal = true},
            {.name = u"local, GPU not measured"_s, .metrics = healthy(), .state = warm, .isLocal = true},
            {.name = u"local, hot"_s, .metrics = healthy(), .state = {.avgSoc = 140}, .isLocal = true},
            {.name = u"halves"_s, .metrics = halves},
            {.name = u"no containers"_s, .metrics = healthy(), .state = expanded},
            {.name = u"containers"_s, .metrics = withContainers},
            {.name = u"containers, open"_s, .metrics = withContainers, .state = expanded},
        };
        QStringList texts;
        for (const CardCase& example : cases)
            texts += shown(example);
        QCOMPARE(texts, fixtureLines(u"views/cards.txt"_s));
    }

    void barFill() {
        using Fill = std::pair<double, ColorRole::Role>;
        const std::pair<double, Fill> rows[] = {
            {-3, {0, Blue}},         {79.9, {0.799, Blue}}, {80, {0.8, Orange}},
            {89.9, {0.899, Orange}}, {90, {0.9, Red}},      {412, {1, Red}}, // more than one processor
        };
        for (const auto& [percent, fill] : rows) {
            const MetricBarContent bar = metricBarContent(u"CPU"_s, percent, {});
            QCOMPARE(Fill(bar.fraction, bar.fillRole), fill);
        }
    }

    void barsHaveTheirTrends() {
        Server server = remote();
        server.metrics = healthy(36);
        server.metrics->latencyMs = 21;
        ServerTrend trend;
        for (const double seconds : {0.0, 60.0}) {
            server.metrics->lastChecked = {seconds};
            trend.note(*server.metrics);
        }
        const ServerCardContent card = serverCardContent(server, {}, macWords, &trend);
        QCOMPARE(card.latencyTrend.points.last(), QPointF(1, 1)); // of the longest
        QStringList texts{card.latencyTrend.text};
        for (const MetricBarContent& bar : card.bars)
            texts += bar.trend.text;
        const auto end = u" in the last minute"_s;
        QCOMPARE(texts, (QStringList{u"21 ms"_s + end, u"25%"_s + end, u"40%"_s + end, u"30%"_s + end}));
    }

    void trends() {
        QCOMPARE(figureTrend(nullptr, TrendFigure::cpu), TrendContent());
        ServerTrend trend;
        const auto note = [&trend](int minutes, int cpu) {
            ServerMetrics metrics = cpu < 0 ? ServerMetrics::offline({}) : healthy();
            metrics.cpuPercent = cpu;
            metrics.latencyMs = cpu;
            const QDateTime noon(QDate(2024, 5, 17), QTime(12, 0));
            metrics.lastChecked = {static_cast<double>(noon.toSecsSinceEpoch() - 978'307'200 + 60LL * minutes)};
            trend.note(metrics);
        };
        note(0, 20);
        QCOMPARE(figureTrend(&trend, TrendFigure::cpu), TrendContent()); // nothing to compare
        QCOMPARE(healthTrend(&trend, QLocale::c()), TrendContent());
        const std::tuple<int, int, QString, QString, QString> rows[] = {
            {1, 20, u"20% in the last minute"_s, u"20 ms in the last minute"_s, u"Healthy for the last minute"_s},
            {5, -1, u"20% in the last 5 minutes"_s, u"20 ms in the last 5 minutes"_s, u"Offline since 12:05"_s},
            {6, 70, u"20 to 70% in the last 6 minutes"_s, u"20 to 70 ms in the last 6 minutes"_s,
             u"Healthy since 12:06|Offline 12:05 to 12:06"_s},
            {61, 5, u"5 to 70% in the last hour"_s, u"5 to 70 ms in the last hour"_s,
             u"Healthy since 13:01|Offline 12:05 to 12:06"_s},
            {70, 5, u"5 to 70% in the last 1 h 10 min"_s, u"5 to 70 ms in the last 1 h 10 min"_s,
             u"Healthy since 13:10|Offline 12:05 to 12:06"_s},
        };
        for (const auto& [minutes, cpu, percents, latency, health] : rows) {
            note(minutes, cpu);
            QCOMPARE(figureTrend(&trend, TrendFigure::cpu).text, percents);
            QCOMPARE(figureTrend(&trend, TrendFigure::latency).text, latency);
            QCOMPARE(healthTrend(&trend, QLocale::c()).text.replace(u'\n', u'|'), health);
        }
        const QList<QPointF> points = figureTrend(&trend, TrendFigure::cpu).points;
        QCOMPARE(points.first(), QPointF(0, 0.2));
        QVERIFY(qIsNaN(points.at(2).y())); // offline: the line breaks
        QVERIFY(qIsNaN(points.at(4).y())); // as where nobody looked
        QCOMPARE(points.last(), QPointF(1, 0.05));
    }

    void containerRow() {
        for (const QString& state : {u"Running"_s, u"exited"_s, u"paused"_s, u"created"_s, QString()}) {
            const bool running = state == u"Running";
            const ContainerRowContent row = containerRowContent(container(u"c"_s, state), {});
            QCOMPARE(row.dotRole, running ? Green : Red);
            QCOMPARE(row.shellEnabled, running);
            QCOMPARE(row.shellHelp, running ? u"Enter container shell (docker exec)"_s : u"Container is stopped"_s);
            QVERIFY(row.restartEnabled && !row.restarting);
        }
        // A container that came without an id is not the one restarting while none is.
        QVERIFY(!containerRowContent(container({}, u"exited"_s), {}).restarting);
    }

    void outsideText() {
        const auto rocket = u"\U0001f680"_s;
        const auto rightToLeft = u"\u062e\u0627\u062f\u0645"_s;
        QCOMPARE(displayText(u" a\r\nb\tc\u2028d\n"_s), u"a  b c d"_s);
        QCOMPARE(displayText(u"<b>x</b> &amp;"_s), u"<b>x</b> &amp;"_s);
        QCOMPARE(displayText(u"a\u202egnp.exe\u2069"_s), u"agnp.exe"_s); // direction turned
        QCOMPARE(displayText(rightToLeft), rightToLeft);
        QCOMPARE(displayText(QString(65536, u'e')), QString(300, u'e') + u"\u2026"_s);
        // The cut falls inside the pair of the 150th, which then goes as a whole.
        QCOMPARE(displayText(u'x' + rocket.repeated(400)), u'x' + rocket.repeated(149) + u"\u2026"_s);
    }

    void menus() {
        Server local = remote();
        local.isEnabled = false;
        local.isLocal = true;
        const QList<CardMenuEntry> pinLines = pinMenu({MenuBarItem::peakTemp}, macWords);
        QCOMPARE(lines(cardMenu(remote(), {}, macWords) + cardMenu(local, {}, macWords) + pinLines),
                 fixtureLines(u"views/menus.txt"_s));
        QVERIFY(cardMenu(local, {}, macWords).last().isDestructive);
        for (qsizetype preset = 0; const PinPreset its : allPinPresets)
            QCOMPARE(pinLines[8 + preset++].pins, pins(its));
    }

    void endsOfTheFleet() {
        const QList<Server> fleet{remote(), remote(), remote()};
        const std::tuple<int, QList<Server>, bool, bool> rows[] = {
            {0, fleet, false, true}, {1, fleet, true, true}, {2, fleet, true, false}, {0, {fleet[0]}, false, false}};
        for (const auto& [index, all, up, down] : rows) {
            const QList<CardMenuEntry> menu = cardMenu(fleet[index], all, macWords);
            QVERIFY(menu[0].isEnabled == up && menu[1].isEnabled == down);
        }
    }

    void updatedTime() {
        const QDateTime reference = QDateTime::fromString(u"2001-01-01T00:00:00Z"_s, Qt::ISODate);
        const QDateTime moment(QDate(2024, 5, 17), QTime(14, 5, 7));
        const std::pair<QString, QString> rows[] = {
            {u"C"_s, u"14:05:07"_s},       {u"de_DE"_s, u"14:05:07"_s}, {u"zh_CN"_s, u"14:05:07"_s},
            {u"es_ES"_s, u"14:05:07"_s},   {u"fi_FI"_s, u"14.05.07"_s}, {u"fr_CA"_s, u"14 h 05 min 07 s"_s},
            {u"en_US"_s, u"2:05:07 PM"_s},
        };
        for (const auto& [locale, time] : rows)
            QCOMPARE(updatedText(Instant{double(reference.secsTo(moment))}, QLocale(locale)).replace(u'\u202f', u' '),
                     u"Updated "_s + time); // newer locale data has a narrow space
        QCOMPARE(updatedText({}, QLocale::c()), QString());
    }

    void slowRefresh() {
        for (const auto& [cycle, interval, text, sharing] :
             {std::tuple(30'000ms, 30s, u"", u""),
              {30'001ms, 30s, u"31 seconds. A longer interval or shared connections", u"31 seconds. A longer interval"},
              {120'000ms, 60s, u"120 seconds. A longer interval or shared connections",
               u"120 seconds. A longer interval"},
              {120'001ms, 60s, u"121 seconds. Shared connections", u"121 seconds. Pausing servers"}})
            for (const bool sharesConnections : {false, true}) {
                const QString middle = QString::fromUtf16(sharesConnections ? sharing : text);
                QCOMPARE(slowText(cycle, interval, sharesConnections),
                         middle.isEmpty() ? middle : u"A refresh takes "_s + middle + u" would help."_s);
            }
    }
};

QTEST_GUILESS_MAIN(CardContentTest)
#include "tst_cardcontent.moc"
