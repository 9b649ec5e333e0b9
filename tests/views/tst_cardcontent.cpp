#include "PopoverContent.h"
#include "card/CardMenu.h"
#include "card/ServerCardContent.h"
#include "controls/DisplayText.h"

#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using enum ColorRole::Role;

namespace {

Server remote() {
    Server server;
    server.id = QUuid::createUuid();
    server.name = u"web-1"_s;
    server.user = u"deploy"_s;
    server.host = u"192.0.2.10"_s;
    server.port = 2222;
    return server;
}

ServerMetrics healthy() {
    ServerMetrics metrics;
    metrics.cpuPercent = 24.5;
    metrics.memoryUsedMB = 3280;
    metrics.memoryTotalMB = 8192;
    metrics.diskUsedGB = 42.5;
    metrics.diskTotalGB = 120;
    return metrics;
}

ServerCardContent card(const ServerMetrics& metrics, const CardState& state = {}, bool isLocal = false) {
    Server server = remote();
    server.metrics = metrics;
    server.isLocal = isLocal;
    return serverCardContent(server, state);
}

ServerCardContent localCard(const ServerMetrics& metrics, const CardState& state) {
    return card(metrics, state, true);
}

ContainerInfo container(const QString& id, const QString& state) {
    return {id, u"name-"_s + id, u"image"_s, u"Up 2 days"_s, state, {}};
}

/// The captions of a menu's lines, "-" for a divider; a disabled one in brackets.
QStringList captions(const QList<CardMenuEntry>& menu) {
    QStringList texts;
    for (const CardMenuEntry& entry : menu)
        texts += entry.isDivider() ? u"-"_s : entry.isEnabled ? entry.text : u'[' + entry.text + u']';
    return texts;
}

} // namespace

class CardContentTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void dot() {
        QCOMPARE(serverCardContent(remote(), {}).dotRole, Gray); // never probed
        QCOMPARE(card(ServerMetrics::offline(u"no"_s)).dotRole, Red);
        for (const auto& [diskUsedGB, role] : {std::pair(42.5, Green), {100.0, Orange}, {118.0, Red}}) {
            ServerMetrics metrics = healthy();
            metrics.diskUsedGB = diskUsedGB;
            QCOMPARE(card(metrics).dotRole, role);
        }
    }

    void pausedShowsNothingElse() {
        Server server = remote();
        server.metrics = healthy();
        server.metrics->containers = {container(u"a"_s, u"running"_s)};
        server.isLocal = true;
        server.isEnabled = false;
        const ServerCardContent card = serverCardContent(server, {.isExpanded = true, .avgSoc = 41});
        QCOMPARE(card.notice, u"Monitoring paused. Click play icon to resume."_s);
        QCOMPARE(card.pauseSymbol, u"play.circle"_s);
        QCOMPARE(card.pauseHelp, u"Resume monitoring"_s);
        QCOMPARE(std::pair(card.dotRole, card.pauseRole), std::pair(Gray, Green));
        QVERIFY(!card.isEnabled && !card.isChecking && !card.hasFailed && !card.hasHardwareRow && !card.isExpanded);
        QVERIFY(card.latencyText.isEmpty() && card.bars.isEmpty() && card.containersText.isEmpty());
    }

    void checkingAndFailed() {
        const ServerCardContent checking = serverCardContent(remote(), {});
        QVERIFY(checking.isChecking);
        QCOMPARE(checking.notice, u"Checking..."_s);
        QCOMPARE(checking.address, u"deploy@192.0.2.10:2222"_s);

        const ServerCardContent failed = localCard(ServerMetrics::offline(u"first\nsecond"_s), {});
        QVERIFY(failed.hasFailed && failed.bars.isEmpty() && failed.latencyText.isEmpty() && !failed.hasHardwareRow);
        QCOMPARE(failed.errorText, u"first second"_s);
        QCOMPARE(failed.address, u"Local Machine"_s);
    }

    void bars() {
        ServerMetrics withGpu = healthy();
        withGpu.gpuPercent = 0;
        ServerMetrics halves; // go to the even digit, as printf rounds them
        halves.cpuPercent = 0.25;
        halves.memoryUsedMB = 256;
        halves.memoryTotalMB = 2048;
        const CardState warm{.avgSoc = 41.3, .gpuPercent = 8};
        const CardState withoutSensors{.gpuPercent = 8};
        const QString rest = u", RAM 3.2 / 8.0 GB (40%), DISK 42.5 / 120.0 GB (35%)"_s;
        const QString idleGpu = u"CPU 24.5%, GPU 0.0% (Apple Silicon)"_s + rest;
        const std::pair<ServerCardContent, QString> rows[] = {
            {card(healthy(), warm), u"CPU 24.5%"_s + rest},
            {card(withGpu, warm), idleGpu},
            {localCard(withGpu, withoutSensors), idleGpu},
            {localCard(healthy(), warm),
             u"CPU 24.5%, GPU 8.0% (Apple Silicon)"_s + rest + u", TEMP 41.3\u00b0C (Apple Silicon)"_s},
            {card(halves), u"CPU 0.2%, RAM 0.2 / 2.0 GB (12%), DISK 0.0 / 0.0 GB (0%)"_s},
        };
        for (const auto& [shown, expected] : rows) {
            QStringList texts;
            for (const MetricBarContent& bar : shown.bars)
                texts += bar.label + u' ' + bar.detail;
            QCOMPARE(texts.join(u", "_s), expected);
        }
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

    void temperatureBadge() {
        QCOMPARE(localCard(healthy(), {.avgSoc = 41.5}).temperatureText, u"42\u00b0C"_s);
        QCOMPARE(localCard(healthy(), {.avgSoc = 0}).temperatureText, QString());
        QCOMPARE(card(healthy(), {.avgSoc = 41}).temperatureText, QString());
        const MetricBarContent hot = localCard(healthy(), {.avgSoc = 140}).bars.last();
        QCOMPARE(hot.detail, u"140.0\u00b0C (Apple Silicon)"_s);
        QCOMPARE(hot.fraction, 1.0);
    }

    void containersBar() {
        ServerMetrics metrics = healthy();
        const ServerCardContent without = card(metrics, {.isExpanded = true});
        QVERIFY(without.containersText.isEmpty() && !without.isExpanded);

        metrics.containers = {container(u"a"_s, u"Running"_s), container(u"b"_s, u"exited"_s),
                              container(u"a"_s, u"RUNNING"_s)};
        const ServerCardContent folded = card(metrics);
        QCOMPARE(folded.containersText, u"2 / 3 Containers"_s);
        QCOMPARE(folded.expandText, u"Show"_s);
        QCOMPARE(folded.expandSymbol, u"chevron.down.circle.fill"_s);
        const ServerCardContent open = card(metrics, {.isExpanded = true});
        QVERIFY(open.isExpanded);
        QCOMPARE(open.expandText, u"Hide"_s);
        QStringList order;
        for (const ContainerRowContent& row : open.containers)
            order += row.id + u' ' + row.stateWord;
        QCOMPARE(order, QStringList({u"a running"_s, u"b stopped"_s, u"a running"_s}));
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

    void contextMenu() {
        Server server = remote();
        const QString common = u"Move Up|Move Down|-|Open SSH in Terminal|Refresh|%1 Monitoring|-|Delete Server"_s;
        QCOMPARE(captions(cardMenu(server, {})).join(u'|'), common.arg(u"Pause"_s));

        server.isEnabled = false;
        server.isLocal = true;
        const QList<CardMenuEntry> menu = cardMenu(server, {});
        QCOMPARE(captions(menu).join(u'|'),
                 u"Hardware Specs & Thermals...|Pin to Menu Bar...|-|"_s + common.arg(u"Resume"_s));
        QCOMPARE(menu[8].symbol, u"play.circle"_s);
        QVERIFY(menu.last().isDestructive);
    }

    void endsOfTheFleet() {
        const QList<Server> fleet{remote(), remote(), remote()};
        const std::tuple<int, QList<Server>, QString> rows[] = {
            {0, fleet, u"[Move Up] Move Down"_s},
            {1, fleet, u"Move Up Move Down"_s},
            {2, fleet, u"Move Up [Move Down]"_s},
            {0, {fleet[0]}, u"[Move Up] [Move Down]"_s},
        };
        for (const auto& [index, all, moves] : rows)
            QCOMPARE(captions(cardMenu(fleet[index], all)).first(2).join(u' '), moves);
    }

    void pinSubmenu() {
        const QList<CardMenuEntry> menu = pinMenu({MenuBarItem::peakTemp});
        QCOMPARE(captions(menu),
                 QStringList({u"Mac SoC Average Temp"_s, u"\u2713 Hotspot / Peak Core Temp"_s, u"SSD Storage Temp"_s,
                              u"Mac CPU Usage"_s, u"Mac GPU Usage"_s, u"Mac RAM Usage"_s, u"Server Fleet Status"_s,
                              u"-"_s, u"Pin All Metrics (All 7)"_s, u"Pin All Resources (CPU + GPU + RAM)"_s,
                              u"Pin All Thermals (SoC + Peak + SSD)"_s, u"Reset Default (SoC + Status)"_s}));
        QCOMPARE(menu[1].symbol, u"checkmark"_s);
        QCOMPARE(menu[2].symbol, u"internaldrive"_s);
        QCOMPARE(menu.last().pins, MenuBarItemSet({MenuBarItem::socTemp, MenuBarItem::serverStatus}));
        QCOMPARE(menu[9].pins, MenuBarItemSet({MenuBarItem::cpuUsage, MenuBarItem::gpuUsage, MenuBarItem::ramUsage}));
    }

    void updatedTime() {
        const QDateTime reference(QDate(2001, 1, 1), QTime(0, 0), Qt::UTC);
        const QDateTime moment(QDate(2024, 5, 17), QTime(14, 5, 7));
        const std::pair<QString, QString> rows[] = {
            {u"C"_s, u"14:05:07"_s},       {u"de_DE"_s, u"14:05:07"_s}, {u"zh_CN"_s, u"14:05:07"_s},
            {u"es_ES"_s, u"14:05:07"_s},   {u"fi_FI"_s, u"14.05.07"_s}, {u"fr_CA"_s, u"14 h 05 min 07 s"_s},
            {u"en_US"_s, u"2:05:07 PM"_s},
        };
        for (const auto& [locale, time] : rows)
            QCOMPARE(updatedText(Instant{double(reference.secsTo(moment))}, QLocale(locale)), u"Updated "_s + time);
        QCOMPARE(updatedText({}, QLocale::c()), QString());
    }
};

QTEST_GUILESS_MAIN(CardContentTest)
#include "tst_cardcontent.moc"
