// servers.json with 1,000 hosts of 20 containers: the time to load and to save it, and the memory of holding it.

#include "Coding.h"
#include "Figures.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTemporaryDir>

#include <algorithm>

using namespace tarnwick;

namespace {

QList<Server> largeFleet() {
    QList<Server> fleet;
    for (int i = 0; i < 1000; ++i) {
        Server server;
        server.id = QUuid::createUuid();
        server.name = QStringLiteral("host-%1").arg(i);
        server.host = QStringLiteral("10.0.%1.%2").arg(i / 250).arg(i % 250);
        server.user = QStringLiteral("deploy");
        server.customSshKeyPath = QStringLiteral("/home/someone/.ssh/id_ed25519");
        ServerMetrics metrics;
        metrics.cpuPercent = i % 100;
        metrics.memoryUsedMB = 1000 + i;
        metrics.memoryTotalMB = 16'000;
        metrics.diskUsedGB = 120.3;
        metrics.diskTotalGB = 460.4;
        metrics.loadAvg1m = 0.45;
        metrics.uptimeString = QStringLiteral("14 days");
        metrics.latencyMs = 19;
        metrics.lastChecked = Instant::now();
        for (int c = 0; c < 20; ++c) {
            metrics.containers.append(ContainerInfo(
                QStringLiteral("%1%2").arg(i, 8, 16, QLatin1Char('0')).arg(c, 4, 16, QLatin1Char('0')),
                QStringLiteral("service-%1").arg(c), QStringLiteral("registry.example/team/service-%1:1.4").arg(c),
                QStringLiteral("Up 12 days"), QStringLiteral("running"),
                QStringLiteral("0.0.0.0:80%1->80/tcp").arg(c)));
        }
        server.metrics = metrics;
        fleet.append(server);
    }
    return fleet;
}

} // namespace

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("servers.json"));
    {
        const QList<Server> fleet = largeFleet();
        double fastest = 1e9;
        for (int round = 0; round < 5; ++round) {
            const double start = figures::wallMilliseconds();
            const auto json = encodeServers(fleet);
            QSaveFile file(path);
            if (!json || !file.open(QIODevice::WriteOnly) || file.write(*json) != json->size() || !file.commit())
                return 2;
            fastest = std::min(fastest, figures::wallMilliseconds() - start);
        }
        figures::report("save 1,000 hosts x 20 containers", fastest, "ms", 100);
    }
    double fastest = 1e9;
    double plainRead = 1e9;
    for (int round = 0; round < 5; ++round) {
        double start = figures::wallMilliseconds();
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return 2;
        const QByteArray json = file.readAll();
        plainRead = std::min(plainRead, figures::wallMilliseconds() - start);
        start = figures::wallMilliseconds();
        const auto decoded = decodeServers(json);
        const auto* fleet = std::get_if<QList<Server>>(&decoded);
        if (!fleet || fleet->size() != 1000)
            return 2;
        fastest = std::min(fastest, figures::wallMilliseconds() - start + plainRead);
    }
    figures::report("load 1,000 hosts x 20 containers", fastest, "ms", 100,
                    QStringLiteral("(reading the bytes alone: %1 ms, %2 kB)")
                        .arg(plainRead, 0, 'f', 2)
                        .arg(QFileInfo(path).size() / 1000));
    return figures::exitStatus();
}
