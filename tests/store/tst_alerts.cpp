#include "AlertRules.h"
#include "NotificationService.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

const QString id = u"0B4C8D0E-6F3A-4B52-9C1D-2E5F60718293"_s;

Server server() {
    Server server;
    server.id = QUuid(id);
    server.name = u"web \"1\""_s;
    return server;
}

ServerMetrics metrics(double memoryUsed, double diskUsed, double diskTotal) {
    ServerMetrics metrics;
    metrics.memoryUsedMB = memoryUsed;
    metrics.memoryTotalMB = 1000;
    metrics.diskUsedGB = diskUsed;
    metrics.diskTotalGB = diskTotal;
    return metrics;
}

QStringList lines(const QList<Alert>& alerts) {
    QStringList lines;
    for (const Alert& alert : alerts)
        lines.append(alert.title + u" | "_s + alert.message + u" | "_s + alert.key.mid(id.size()));
    return lines;
}

} // namespace

class AlertsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void rules_data() {
        QTest::addColumn<ServerMetrics>("metrics");
        QTest::addColumn<QStringList>("expected");
        const auto row = [](const char* name, const ServerMetrics& metrics, const QStringList& expected) {
            QTest::newRow(name) << metrics << expected;
        };
        const QString disk90 = u"Disk Full Warning: web \"1\" | Disk is at 90.0% (45.0 GB used of 50.0 GB) | -disk"_s;
        row("disk at the threshold", metrics(0, 45, 50), {disk90});
        row("disk just below", metrics(0, 89.9, 100), {});
        row("memory at the threshold", metrics(950, 0, 0),
            {u"High RAM Usage: web \"1\" | Memory is at 95.0% | -ram"_s});
        row("memory just below", metrics(949, 0, 0), {});
        row("both", metrics(970, 95, 100),
            {u"Disk Full Warning: web \"1\" | Disk is at 95.0% (95.0 GB used of 100.0 GB) | -disk"_s,
             u"High RAM Usage: web \"1\" | Memory is at 97.0% | -ram"_s});
        row("never above 100 percent", metrics(2000, 120.25, 100),
            {u"Disk Full Warning: web \"1\" | Disk is at 100.0% (120.2 GB used of 100.0 GB) | -disk"_s,
             u"High RAM Usage: web \"1\" | Memory is at 100.0% | -ram"_s});
        ServerMetrics offline = metrics(1000, 100, 100);
        offline.errorMessage = u"no \"route\" \\ to host"_s;
        row("offline is all there is", offline, {u"Server Offline: web \"1\" | no \"route\" \\ to host | -offline"_s});
        offline.errorMessage = u""_s;
        row("offline without a reason", offline, {u"Server Offline: web \"1\" |  | -offline"_s});
    }
    void rules() {
        QFETCH(ServerMetrics, metrics);
        QFETCH(QStringList, expected);
        const QList<Alert> alerts = alertsFor(server(), metrics, AppSettings());
        QCOMPARE(lines(alerts), expected);
        for (const Alert& alert : alerts)
            QVERIFY(alert.key.startsWith(id + u'-'));

        Server paused = server();
        paused.isEnabled = false;
        QVERIFY(alertsFor(paused, metrics, AppSettings()).isEmpty());
    }

    void thresholdsAreTheUsers() {
        AppSettings settings;
        settings.alertDiskThresholdPercent = 50;
        settings.alertRamThresholdPercent = 101;
        QCOMPARE(alertsFor(server(), metrics(1000, 5, 10), settings).size(), 1);
    }

    void sameKeyIsQuietForFiveMinutes() {
        QList<double> posted;
        double now = 0;
        const auto send = [&posted, &now](const QString& key) {
            NotificationService::sendAlert(u"t"_s, u"m"_s, key, true, Instant{now},
                                           [&](const DesktopNotification&) { posted.append(now); });
        };
        const QString key = QUuid::createUuid().toString();
        for (int check = 0; check < 24; ++check) {
            now = 1000 + 30 * check;
            send(key);
        }
        QCOMPARE(posted, (QList<double>{1000, 1300, 1600}));

        posted.clear();
        now = 1890;
        send(key + u"other"_s);
        now = 1899.9; // 299.9 after the last post
        send(key);
        QCOMPARE(posted, (QList<double>{1890}));

        posted.clear();
        now = 1500; // the clock was set back a little, then a lot
        send(key);
        now = -1e6;
        send(key);
        QCOMPARE(posted, (QList<double>{-1e6}));
    }

    void notificationTexts() {
        const DesktopNotification loud = NotificationService::notification(u"Title"_s, u"<b>&"_s, true);
        QCOMPARE((QStringList{loud.title, loud.subtitle, loud.body, loud.soundName.value_or(u"none"_s)}),
                 (QStringList{u"Tarnwick"_s, u"Title"_s, u"<b>&"_s, u"Hero"_s}));
        QCOMPARE(NotificationService::notification(u"t"_s, u"m"_s, false).soundName, std::nullopt);

        QCOMPARE(
            NotificationService::appleScriptLine(u"Disk: \"a\""_s, u"b \\ \"c\""_s, true),
            u"display notification \"b \\ \\\"c\\\"\" with title \"Tarnwick\" subtitle \"Disk: \\\"a\\\"\" sound name \"Hero\""_s);
        QCOMPARE(NotificationService::appleScriptLine(u"t"_s, u"m"_s, false),
                 u"display notification \"m\" with title \"Tarnwick\" subtitle \"t\""_s);
    }
};

QTEST_GUILESS_MAIN(AlertsTest)
#include "tst_alerts.moc"
