#include "ServerMetrics.h"

#include <QHashFunctions>

#include <algorithm>

namespace tarnwick {

namespace {
double percentOf(double used, double total) {
    if (!(total > 0))
        return 0;
    const double percent = used / total * 100.0;
    return percent > 0 ? std::min(percent, 100.0) : 0; // a NaN is not > 0 either
}
} // namespace

ServerMetrics ServerMetrics::offline(const QString& reason) {
    ServerMetrics metrics;
    metrics.lastChecked = Instant::now();
    metrics.errorMessage = reason;
    return metrics;
}

double ServerMetrics::memoryPercent() const {
    return percentOf(memoryUsedMB, memoryTotalMB);
}

double ServerMetrics::diskPercent() const {
    return percentOf(diskUsedGB, diskTotalGB);
}

ServerHealthStatus ServerMetrics::status() const {
    const double disk = diskPercent();
    const double memory = memoryPercent();
    if (errorMessage)
        return ServerHealthStatus::offline;
    if (disk >= 90 || memory >= 95 || cpuPercent >= 95)
        return ServerHealthStatus::critical;
    if (disk >= 80 || cpuPercent >= 80 || memory >= 85)
        return ServerHealthStatus::warning;
    const bool allRunning = std::all_of(containers.cbegin(), containers.cend(),
                                        [](const ContainerInfo& container) { return container.isRunning(); });
    return allRunning ? ServerHealthStatus::healthy : ServerHealthStatus::warning;
}

size_t qHash(const ServerMetrics& metrics, size_t seed) noexcept {
    return qHashMulti(seed, metrics.cpuPercent, metrics.gpuPercent.value_or(-1), metrics.memoryUsedMB,
                      metrics.memoryTotalMB, metrics.diskUsedGB, metrics.diskTotalGB, metrics.uptimeString,
                      metrics.loadAvg1m, metrics.containers, metrics.latencyMs,
                      metrics.lastChecked.secondsSinceReferenceDate, metrics.errorMessage.value_or(QString()));
}

} // namespace tarnwick
