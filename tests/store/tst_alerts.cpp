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

ServerMetrics metrics(double memoryUsed, double diskUsed, double diskTotal, const std::optional<QString>& error = {}) {
    ServerMetrics metrics;
    metrics.memoryUsedMB = memoryUsed;
    metrics.memoryTotalMB = 1000;
    metrics.diskUsedGB = diskUsed;
    metrics.diskTotalGB = diskTotal;
    metrics.errorMessage = error;
    return metrics;
}

} // namespace

class AlertsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void rules() {
        Server paused = server();
        paused.isEnabled = false;
        const QString disk = u"Disk Full Warning: web \"1\" | Disk is at "_s;
        const QString memory = u"High RAM Usage: web \"1\" | Memory is at "_s;
        const QString offline = u"Server Offline: web \"1\" | "_s;
        const QString route = u"no \"route\" \\ to host"_s;
        for (const auto& [probed, expected] :
             {std::pair(metrics(0, 45, 50), QStringList{disk + u"90.0% (45.0 GB used of 50.0 GB) | -disk"_s}),
              {metrics(0, 89.9, 100), {}},
              {metrics(950, 0, 0), {memory + u"95.0% | -ram"_s}},
              {metrics(949, 0, 0), {}},
              {metrics(970, 95, 100),
               {disk + u"95.0% (95.0 GB used of 100.0 GB) | -disk"_s, memory + u"97.0% | -ram"_s}},
              {metrics(2000, 120.25, 100), // never above 100 percent
               {disk + u"100.0% (120.2 GB used of 100.0 GB) | -disk"_s, memory + u"100.0% | -ram"_s}},
              {metrics(1000, 100, 100, route), {offline + route + u" | -offline"_s}},
              {metrics(1000, 100, 100, u""_s), {offline + u" | -offline"_s}}}) {
            QStringList lines;
            for (const Alert& alert : alertsFor(server(), probed, AppSettings())) {
                QVERIFY(alert.key.startsWith(id + u'-'));
                lines.append(alert.title + u" | "_s + alert.message + u" | "_s + alert.key.mid(id.size()));
            }
            QCOMPARE(lines, expected);
            QVERIFY(alertsFor(paused, probed, AppSettings()).isEmpty());
        }
    }

    void thresholdsAreTheUsers() {
        AppSettings settings;
        settings.alertDiskThresholdPercent = 50;
        settings.alertRamThresholdPercent = 101;
        QCOMPARE(alertsFor(server(), metrics(1000, 5, 10), settings).size(), 1);
    }

    void sameKeyIsQuietForFiveMinutes() {
        const QString key = QUuid::createUuid().toString();
        const auto isPosted = [](const QString& alert, double now) {
            return NotificationService::claim(alert, Instant{now});
        };
        QList<double> posted;
        for (int now = 1000; now <= 1690; now += 30)
            if (isPosted(key, now))
                posted.append(now);
        QCOMPARE(posted, (QList<double>{1000, 1300, 1600}));
        QVERIFY(isPosted(key + u"other"_s, 1890));
        QVERIFY(!isPosted(key, 1899.9)); // 299.9 after the last post
        QVERIFY(!isPosted(key, 1500));   // the clock was set back a little, then a lot
        QVERIFY(isPosted(key, -1e6));
    }

    void notificationTexts() {
        const DesktopNotification loud = NotificationService::notification(u"Title"_s, u"<b>&"_s, true);
        QCOMPARE((QStringList{loud.title, loud.subtitle, loud.body, loud.soundName.value_or(u"none"_s)}),
                 (QStringList{u"Tarnwick"_s, u"Title"_s, u"<b>&"_s, u"Hero"_s}));
        QCOMPARE(NotificationService::notification(u"t"_s, u"m"_s, false).soundName, std::nullopt);
    }
};

QTEST_GUILESS_MAIN(AlertsTest)
#include "tst_alerts.moc"
