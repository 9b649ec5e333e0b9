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
    void dot() {
        const auto roleOf = [](const Server& server) {
            return serverCardContent(server, {}).dotRole;
        };
        Server paused = remoteWith(healthy());
        paused.isEnabled = false;
        QCOMPARE(roleOf(paused), Gray);
        QCOMPARE(roleOf(remote()), Gray); // never probed
        ServerMetrics metrics = healthy();
        QCOMPARE(roleOf(remoteWith(metrics)), Green);
        metrics.diskUsedGB = 100;
        QCOMPARE(roleOf(remoteWith(metrics)), Orange);
        metrics.diskUsedGB = 118;
        QCOMPARE(roleOf(remoteWith(metrics)), Red);
        QCOMPARE(roleOf(remoteWith(ServerMetrics::offline(u"no"_s))), Red);
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

    void bars() {
        const auto texts = [](const Server& server, double avgSoc) {
            return barTexts(serverCardContent(server, {.avgSoc = avgSoc, .gpuPercent = 8}));
        };
        const QString cpu = u"CPU 24.5%"_s;
        const QStringList rest{u"RAM 3.2 / 8.0 GB (40%)"_s, u"DISK 42.5 / 120.0 GB (35%)"_s};
        const QStringList withIdleGpu = QStringList{cpu, u"GPU 0.0% (Apple Silicon)"_s} + rest;
        QCOMPARE(texts(remoteWith(healthy()), 41.3), QStringList{cpu} + rest);
        ServerMetrics withGpu = healthy();
        withGpu.gpuPercent = 0;
        QCOMPARE(texts(remoteWith(withGpu), 0), withIdleGpu);
        QCOMPARE(texts(localWith(withGpu), 0), withIdleGpu); // and without sensors
        QCOMPARE(texts(localWith(healthy()), 41.3), (QStringList{cpu, u"GPU 8.0% (Apple Silicon)"_s} + rest)
                                                        << u"TEMP 41.3\u00b0C (Apple Silicon)"_s);
        // Halves go to the even digit, as printf rounds them.
        ServerMetrics halves;
        halves.cpuPercent = 0.25;
        halves.memoryUsedMB = 256;
        halves.memoryTotalMB = 2048;
        QCOMPARE(texts(remoteWith(halves), 0),
                 (QStringList{u"CPU 0.2%"_s, u"RAM 0.2 / 2.0 GB (12%)"_s, u"DISK 0.0 / 0.0 GB (0%)"_s}));
    }

    void barFill() {
        using Fill = std::pair<double, ColorRole::Role>;
        const auto fill = [](double percent) {
            const MetricBarContent bar = metricBarContent(u"CPU"_s, percent, {});
            return Fill(bar.fraction, bar.fillRole);
        };
        QCOMPARE(fill(-3), Fill(0, Blue));
        QCOMPARE(fill(79.9), Fill(0.799, Blue));
        QCOMPARE(fill(80), Fill(0.8, Orange));
        QCOMPARE(fill(89.9), Fill(0.899, Orange));
        QCOMPARE(fill(90), Fill(0.9, Red));
        QCOMPARE(fill(412), Fill(1, Red)); // more than one processor
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
        const auto moves = [](const Server& server, const QList<Server>& all) {
            return captions(cardMenu(server, all)).first(2).join(u' ');
        };
        QCOMPARE(moves(fleet[0], fleet), u"[Move Up] Move Down"_s);
        QCOMPARE(moves(fleet[1], fleet), u"Move Up Move Down"_s);
        QCOMPARE(moves(fleet[2], fleet), u"Move Up [Move Down]"_s);
        QCOMPARE(moves(fleet[0], {fleet[0]}), u"[Move Up] [Move Down]"_s);
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
        const auto text = [&](const QString& locale) {
            return updatedText(Instant{double(reference.secsTo(moment))}, QLocale(locale));
        };
        for (const auto& locale : {u"C"_s, u"de_DE"_s, u"zh_CN"_s, u"es_ES"_s})
            QCOMPARE(text(locale), u"Updated 14:05:07"_s);
        QCOMPARE(text(u"en_US"_s), u"Updated 2:05:07 PM"_s);
        QCOMPARE(text(u"fi_FI"_s), u"Updated 14.05.07"_s);
        QCOMPARE(text(u"fr_CA"_s), u"Updated 14 h 05 min 07 s"_s);
        QCOMPARE(updatedText({}, QLocale::c()), QString());
    }
};

QTEST_GUILESS_MAIN(CardContentTest)
#include "tst_cardcontent.moc"
