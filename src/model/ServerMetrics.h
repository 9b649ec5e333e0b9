#pragma once

#include "ContainerInfo.h"
#include "Instant.h"
#include "ServerHealthStatus.h"

#include <QList>
#include <QString>

#include <optional>

namespace tarnwick {

/// The result of one probe of one server. A probe failed when `errorMessage` is present; see offline().
struct ServerMetrics {
    double cpuPercent = 0;               ///< CPU busy, percent; can exceed 100
    std::optional<double> gpuPercent;    ///< GPU busy, percent; only when the probe reports it
    double memoryUsedMB = 0;             ///< mebibytes
    double memoryTotalMB = 0;            ///< mebibytes
    double diskUsedGB = 0;               ///< gibibytes
    double diskTotalGB = 0;              ///< gibibytes
    QString uptimeString;                ///< exactly as the probe printed it
    double loadAvg1m = 0;                ///< one-minute load average
    QList<ContainerInfo> containers;     ///< in the order the probe listed them
    qint64 latencyMs = 0;                ///< milliseconds the probe took on a monotonic clock; 0 when it failed
    Instant lastChecked;                 ///< when this result was made
    std::optional<QString> errorMessage; ///< present when the probe failed; says why

    /// The failed-probe record: all numbers 0, no containers, `lastChecked` now, `errorMessage` the reason.
    [[nodiscard]] static ServerMetrics offline(const QString& reason);

    /// Used share of the memory, 0 to 100; 0 when the total is not greater than 0.
    [[nodiscard]] double memoryPercent() const;
    /// Used share of the disk, 0 to 100; 0 when the total is not greater than 0.
    [[nodiscard]] double diskPercent() const;
    /// The health verdict by fixed thresholds (the user's alert thresholds play no part here). Never `checking`.
    [[nodiscard]] ServerHealthStatus status() const;

    friend bool operator==(const ServerMetrics&, const ServerMetrics&) = default;
};

[[nodiscard]] size_t qHash(const ServerMetrics& metrics, size_t seed = 0) noexcept;

} // namespace tarnwick
