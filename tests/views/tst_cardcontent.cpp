#include "CardMenu.h"
#include "DisplayText.h"
#include "PopoverContent.h"
#include "ServerCardContent.h"

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
    metrics.latencyMs = 19;
    return metrics;
}

Server remoteWith(const ServerMetrics& metrics) {
    Server server = remote();
    server.metrics = metrics;
    return server;
}

Server localWith(const ServerMetrics& metrics) {
    Server server = remoteWith(metrics);
    server.isLocal = true;
    return server;
}

ContainerInfo container(const QString& id, const QString& state) {
    return {id, u"name-"_s + id, u"image"_s, u"Up 2 days"_s, state, {}};
}

/// "LABEL detail" of each bar.
QStringList barTexts(const ServerCardContent& card) {
    QStringList texts;
    for (const MetricBarContent& bar : card.bars)
        texts += bar.label + u' ' + bar.detail;
    return texts;
}

/// The captions of a menu's lines, "-" for a divider; a disabled one in brackets.
QStringList captions(const QList<CardMenuEntry>& menu) {
    QStringList texts;
    for (const CardMenuEntry& entry : menu)
        texts += entry.isDivider() ? u"-"_s : entry.isEnabled ? entry.text : u'[' + entry.text + u']';
    return texts;
}

const CardMenuEntry& entryWith(const QList<CardMenuEntry>& menu, QStringView text) {
    return *std::ranges::find(menu, text, &CardMenuEntry::text);
}

} // namespace

class CardContentTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void dot_data() {
        QTest::addColumn<Server>("server");
        QTest::addColumn<ColorRole::Role>("role");
        Server paused = remoteWith(healthy());
        paused.isEnabled = false;
        QTest::newRow("paused") << paused << Gray;
        QTest::newRow("never probed") << remote() << Gray;
        QTest::newRow("healthy") << remoteWith(healthy()) << Green;
        ServerMetrics busy = healthy();
        busy.diskUsedGB = 100;
        QTest::newRow("warning") << remoteWith(busy) << Orange;
        busy.diskUsedGB = 118;
        QTest::newRow("critical") << remoteWith(busy) << Red;
        QTest::newRow("offline") << remoteWith(ServerMetrics::offline(u"no"_s)) << Red;
    }
    void dot() {
        QFETCH(Server, server);
        QFETCH(ColorRole::Role, role);
        QCOMPARE(serverCardContent(server, {}).dotRole, role);
    }

    void pausedShowsNothingElse() {
        ServerMetrics metrics = healthy();
        metrics.containers = {container(u"a"_s, u"running"_s)};
        Server server = localWith(metrics);
        server.isEnabled = false;
        const ServerCardContent card = serverCardContent(server, {.isExpanded = true, .avgSoc = 41});
        QCOMPARE(card.notice, u"Monitoring paused. Click play icon to resume."_s);
        QCOMPARE(card.pauseSymbol, u"play.circle"_s);
        QCOMPARE(card.pauseRole, Green);
        QCOMPARE(card.pauseHelp, u"Resume monitoring"_s);
        QVERIFY(!card.isEnabled && !card.isChecking && !card.hasFailed && !card.hasHardwareRow && !card.isExpanded);
        QVERIFY(card.latencyText.isEmpty() && card.bars.isEmpty() && card.containersText.isEmpty());
    }

    void checkingAndFailed() {
        const ServerCardContent checking = serverCardContent(remote(), {});
        QVERIFY(checking.isChecking);
        QCOMPARE(checking.notice, u"Checking..."_s);
        QCOMPARE(checking.address, u"deploy@192.0.2.10:2222"_s);

        const ServerCardContent failed = serverCardContent(localWith(ServerMetrics::offline(u"first\nsecond"_s)), {});
        QVERIFY(failed.hasFailed && failed.bars.isEmpty() && failed.latencyText.isEmpty() && !failed.hasHardwareRow);
        QCOMPARE(failed.errorText, u"first second"_s);
        QCOMPARE(failed.address, u"Local Machine"_s);
    }

    void bars_data() {
        QTest::addColumn<Server>("server");
        QTest::addColumn<double>("avgSoc");
        QTest::addColumn<QStringList>("texts");
        const QStringList plain{u"CPU 24.5%"_s, u"RAM 3.2 / 8.0 GB (40%)"_s, u"DISK 42.5 / 120.0 GB (35%)"_s};
        QTest::newRow("remote") << remoteWith(healthy()) << 41.3 << plain;
        ServerMetrics withGpu = healthy();
        withGpu.gpuPercent = 0;
        QTest::newRow("remote with a GPU figure")
            << remoteWith(withGpu) << 0.0 << QStringList{plain[0], u"GPU 0.0% (Apple Silicon)"_s, plain[1], plain[2]};
        QTest::newRow("local, both read here") << localWith(healthy()) << 41.3
                                               << QStringList{plain[0], u"GPU 8.0% (Apple Silicon)"_s, plain[1],
                                                              plain[2], u"TEMP 41.3\u00b0C (Apple Silicon)"_s};
        QTest::newRow("local without sensors")
            << localWith(withGpu) << 0.0 << QStringList{plain[0], u"GPU 0.0% (Apple Silicon)"_s, plain[1], plain[2]};
        // Halves go to the even digit, as printf rounds them.
        ServerMetrics halves;
        halves.cpuPercent = 0.25;
        halves.memoryUsedMB = 256;
        halves.memoryTotalMB = 2048;
        QTest::newRow("halves, and no disk")
            << remoteWith(halves) << 0.0
            << QStringList{u"CPU 0.2%"_s, u"RAM 0.2 / 2.0 GB (12%)"_s, u"DISK 0.0 / 0.0 GB (0%)"_s};
    }
    void bars() {
        QFETCH(Server, server);
        QFETCH(double, avgSoc);
        QFETCH(QStringList, texts);
        QCOMPARE(barTexts(serverCardContent(server, {.avgSoc = avgSoc, .gpuPercent = 8})), texts);
    }

    void barFill_data() {
        QTest::addColumn<double>("percent");
        QTest::addColumn<double>("fraction");
        QTest::addColumn<ColorRole::Role>("role");
        QTest::newRow("below zero") << -3.0 << 0.0 << Blue;
        QTest::newRow("79.9") << 79.9 << 0.799 << Blue;
        QTest::newRow("80") << 80.0 << 0.8 << Orange;
        QTest::newRow("89.9") << 89.9 << 0.899 << Orange;
        QTest::newRow("90") << 90.0 << 0.9 << Red;
        QTest::newRow("more than one processor") << 412.0 << 1.0 << Red;
    }
    void barFill() {
        QFETCH(double, percent);
        QFETCH(double, fraction);
        QFETCH(ColorRole::Role, role);
        const MetricBarContent bar = metricBarContent(u"CPU"_s, percent, {});
        QCOMPARE(bar.fraction, fraction);
        QCOMPARE(bar.fillRole, role);
    }

    void temperatureBadge() {
        QCOMPARE(serverCardContent(localWith(healthy()), {.avgSoc = 41.5}).temperatureText, u"42\u00b0C"_s);
        QCOMPARE(serverCardContent(localWith(healthy()), {.avgSoc = 0}).temperatureText, QString());
        QCOMPARE(serverCardContent(remoteWith(healthy()), {.avgSoc = 41}).temperatureText, QString());
        const ServerCardContent hot = serverCardContent(localWith(healthy()), {.avgSoc = 140});
        QCOMPARE(hot.bars.last().detail, u"140.0\u00b0C (Apple Silicon)"_s);
        QCOMPARE(hot.bars.last().fraction, 1.0);
    }

    void containersBar() {
        ServerMetrics metrics = healthy();
        QVERIFY(serverCardContent(remoteWith(metrics), {.isExpanded = true}).containersText.isEmpty());
        QVERIFY(!serverCardContent(remoteWith(metrics), {.isExpanded = true}).isExpanded);

        metrics.containers = {container(u"a"_s, u"Running"_s), container(u"b"_s, u"exited"_s),
                              container(u"a"_s, u"RUNNING"_s)};
        const ServerCardContent folded = serverCardContent(remoteWith(metrics), {});
        QCOMPARE(folded.containersText, u"2 / 3 Containers"_s);
        QCOMPARE(folded.expandText, u"Show"_s);
        QCOMPARE(folded.expandSymbol, u"chevron.down.circle.fill"_s);
        const ServerCardContent open = serverCardContent(remoteWith(metrics), {.isExpanded = true});
        QVERIFY(open.isExpanded);
        QCOMPARE(open.expandText, u"Hide"_s);
        QStringList order;
        for (const ContainerRowContent& row : open.containers)
            order += row.container.state;
        QCOMPARE(order, QStringList({u"Running"_s, u"exited"_s, u"RUNNING"_s}));
    }

    void containerRow_data() {
        QTest::addColumn<QString>("state");
        QTest::addColumn<bool>("running");
        QTest::newRow("running") << u"Running"_s << true;
        QTest::newRow("exited") << u"exited"_s << false;
        QTest::newRow("paused") << u"paused"_s << false;
        QTest::newRow("created") << u"created"_s << false;
        QTest::newRow("unknown") << QString() << false;
    }
    void containerRow() {
        QFETCH(QString, state);
        QFETCH(bool, running);
        const ContainerRowContent row = containerRowContent(container(u"c"_s, state), {});
        QCOMPARE(row.dotRole, running ? Green : Red);
        QCOMPARE(row.shellEnabled, running);
        QCOMPARE(row.shellHelp, running ? u"Enter container shell (docker exec)"_s : u"Container is stopped"_s);
        QVERIFY(row.restartEnabled && !row.restarting);
    }

    void restartMarksOneAndBlocksAll() {
        const ContainerRowContent it = containerRowContent(container(u"c"_s, u"running"_s), u"c"_s);
        QVERIFY(it.restarting && !it.restartEnabled);
        const ContainerRowContent other = containerRowContent(container(u"d"_s, u"exited"_s), u"c"_s);
        QVERIFY(!other.restarting && !other.restartEnabled);
        // A container that came without an id is not the one restarting while none is.
        QVERIFY(!containerRowContent(container({}, u"exited"_s), {}).restarting);
    }

    void outsideText_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("shown");
        QTest::newRow("lines") << u" a\r\nb\tc\u2028d\n"_s << u"a  b c d"_s;
        QTest::newRow("markup stays text") << u"<b>x</b> &amp;"_s << u"<b>x</b> &amp;"_s;
        QTest::newRow("direction turned") << u"a\u202egnp.exe\u2069"_s << u"agnp.exe"_s;
        QTest::newRow("right to left") << u"\u062e\u0627\u062f\u0645"_s << u"\u062e\u0627\u062f\u0645"_s;
        QTest::newRow("64 KiB") << QString(65536, u'e') << QString(300, u'e') + u"\u2026"_s;
        // The cut falls inside the pair of the 150th, which then goes as a whole.
        QTest::newRow("pairs") << u"x"_s + u"\U0001f680"_s.repeated(400)
                               << u"x"_s + u"\U0001f680"_s.repeated(149) + u"\u2026"_s;
    }
    void outsideText() {
        QFETCH(QString, text);
        QFETCH(QString, shown);
        QCOMPARE(displayText(text), shown);
    }

    void contextMenu() {
        const QStringList common{u"Move Up"_s, u"Move Down"_s, u"-"_s, u"Open SSH in Terminal"_s,
                                 u"Refresh"_s, u""_s,          u"-"_s, u"Delete Server"_s};
        Server server = remote();
        QStringList expected = common;
        expected[5] = u"Pause Monitoring"_s;
        QCOMPARE(captions(cardMenu(server, {})), expected);

        server.isEnabled = false;
        server.isLocal = true;
        expected[5] = u"Resume Monitoring"_s;
        expected = QStringList{u"Hardware Specs & Thermals..."_s, u"Pin to Menu Bar..."_s, u"-"_s} + expected;
        const QList<CardMenuEntry> menu = cardMenu(server, {});
        QCOMPARE(captions(menu), expected);
        QCOMPARE(entryWith(menu, u"Resume Monitoring").symbol, u"play.circle"_s);
        QVERIFY(entryWith(menu, u"Delete Server").isDestructive);
    }

    void endsOfTheFleet() {
        const QList<Server> fleet{remote(), remote(), remote()};
        const auto enabled = [&fleet](const Server& server, QStringView text) {
            return entryWith(cardMenu(server, fleet), text).isEnabled;
        };
        QVERIFY(!enabled(fleet[0], u"Move Up") && enabled(fleet[0], u"Move Down"));
        QVERIFY(enabled(fleet[1], u"Move Up") && enabled(fleet[1], u"Move Down"));
        QVERIFY(enabled(fleet[2], u"Move Up") && !enabled(fleet[2], u"Move Down"));
        QVERIFY(captions(cardMenu(fleet[0], {fleet[0]})).contains(u"[Move Up]"_s));
        QVERIFY(captions(cardMenu(fleet[0], {fleet[0]})).contains(u"[Move Down]"_s));
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

    void updatedTime_data() {
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<QString>("text");
        QTest::newRow("C") << QLocale::c() << u"Updated 14:05:07"_s;
        QTest::newRow("United States") << QLocale(u"en_US"_s) << u"Updated 2:05:07 PM"_s;
        QTest::newRow("Germany") << QLocale(u"de_DE"_s) << u"Updated 14:05:07"_s;
        QTest::newRow("Finland") << QLocale(u"fi_FI"_s) << u"Updated 14.05.07"_s;
        QTest::newRow("Canada, French") << QLocale(u"fr_CA"_s) << u"Updated 14 h 05 min 07 s"_s;
        QTest::newRow("China") << QLocale(u"zh_CN"_s) << u"Updated 14:05:07"_s;
        QTest::newRow("Spain") << QLocale(u"es_ES"_s) << u"Updated 14:05:07"_s;
    }
    void updatedTime() {
        QFETCH(QLocale, locale);
        QFETCH(QString, text);
        const QDateTime reference(QDate(2001, 1, 1), QTime(0, 0), Qt::UTC);
        const QDateTime moment(QDate(2024, 5, 17), QTime(14, 5, 7));
        QCOMPARE(updatedText(Instant{double(reference.secsTo(moment))}, locale), text);
        QCOMPARE(updatedText({}, locale), QString());
    }
};

QTEST_GUILESS_MAIN(CardContentTest)
#include "tst_cardcontent.moc"
