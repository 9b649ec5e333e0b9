#include "AlertRules.h"

#include "FixedPoint.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

QList<Alert> alertsFor(const Server& server, const ServerMetrics& metrics, const AppSettings& settings) {
    if (!server.isEnabled)
        return {};
    const QString id = uuidString(server.id);
    if (metrics.errorMessage)
        return {{u"Server Offline: "_s + server.name, *metrics.errorMessage, id + u"-offline"_s}};

    QList<Alert> alerts;
    if (const double disk = metrics.diskPercent(); disk >= settings.alertDiskThresholdPercent) {
        const QString message = u"Disk is at "_s + fixedPoint(disk, 1) + u"% ("_s + fixedPoint(metrics.diskUsedGB, 1) +
                                u" GB used of "_s + fixedPoint(metrics.diskTotalGB, 1) + u" GB)"_s;
        alerts.append({u"Disk Full Warning: "_s + server.name, message, id + u"-disk"_s});
    }
    if (const double memory = metrics.memoryPercent(); memory >= settings.alertRamThresholdPercent) {
        const QString message = u"Memory is at "_s + fixedPoint(memory, 1) + u"%"_s;
        alerts.append({u"High RAM Usage: "_s + server.name, message, id + u"-ram"_s});
    }
    return alerts;
}

} // namespace tarnwick
