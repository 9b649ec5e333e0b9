#include "ServerMetrics.h"

#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
using namespace tarnwick;

class ServerMetricsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void health() {
        using enum ServerHealthStatus;
        constexpr double nan = std::numeric_limits<double>::quiet_NaN();
        struct Row {
            double cpu = 0;
            double memory = 0;        ///< of 100
            double disk = 0;          ///< of 100
            QStringList containers{}; ///< their states
            ServerHealthStatus expected = healthy;
        };
        const QList<Row> rows{
            {.cpu = 79.9, .memory = 84.9, .disk = 79.9, .containers = {u"running"_s, u"Running"_s}},
            {.cpu = 80, .expected = warning},
            {.memory = 85, .expected = warning},
            {.disk = 80, .expected = warning},
            {.containers = {u"running"_s, u"exited"_s}, .expected = warning},
            {.containers = {u"paused"_s}, .expected = warning},
            {.cpu = 94.9, .memory = 94.9, .disk = 89.9, .expected = warning},
            {.cpu = 95, .expected = critical},
            {.memory = 95, .expected = critical},
            {.disk = 90, .containers = {u"exited"_s}, .expected = critical},
            {.cpu = nan, .memory = nan, .disk = nan},
            {.cpu = nan, .memory = nan, .disk = 95, .expected = critical},
        };
        for (const Row& row : rows) {
            ServerMetrics metrics;
            metrics.cpuPercent = row.cpu;
            metrics.memoryUsedMB = row.memory;
            metrics.diskUsedGB = row.disk;
            metrics.memoryTotalMB = metrics.diskTotalGB = 100;
            for (const QString& state : row.containers)
                metrics.containers.append(ContainerInfo({}, {}, {}, {}, state, {}));
            const auto index = std::to_string(&row - rows.data());
            QVERIFY2(metrics.status() == row.expected, index.c_str());
            metrics.errorMessage = u""_s;
            QCOMPARE(metrics.status(), offline);
        }
        ServerMetrics withoutTotals;
        withoutTotals.memoryUsedMB = withoutTotals.diskUsedGB = 50;
        QCOMPARE(withoutTotals.status(), healthy);
    }

    void outerSlashesOfContainerNames() {
        const auto name = [](const QString& published) {
            return ContainerInfo({}, published, {}, {}, {}, {}).name;
        };
        QCOMPARE(name(u"///web//proxy//"_s), u"web//proxy"_s);
        QCOMPARE(name(u"//"_s), QString());
    }
};

QTEST_APPLESS_MAIN(ServerMetricsTest)
#include "tst_servermetrics.moc"
