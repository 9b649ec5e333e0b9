#pragma once

#include "ServerMetrics.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace tarnwick {

/// One container of the probe line, as printed.
struct RawContainer {
    QString id;
    QString name;
    QString image;
    QString status;
    QString state;
    QString ports; ///< empty when the line has none
};

/// The probe line, decoded. A key that is missing or null is absent; keys are named as the fields.
struct RawPayload {
    std::optional<double> cpu;        ///< percent
    std::optional<double> gpu;        ///< percent; the local script prints it, the remote one does not
    std::optional<double> mem_used;   ///< mebibytes
    std::optional<double> mem_total;  ///< mebibytes
    std::optional<double> disk_used;  ///< gibibytes
    std::optional<double> disk_total; ///< gibibytes
    std::optional<double> load;       ///< one-minute load average
    std::optional<QString> uptime;
    std::optional<QList<RawContainer>> containers;
};

/// The metrics of a probe line. Never fails: bytes that are not exactly one JSON object with fields of the right types
/// (white space around it aside) give the offline record "Failed to parse metrics: " and one short line, with latency
/// 0. Values are taken as they come, whatever their range; of a key that is there twice the last one counts.
[[nodiscard]] ServerMetrics parseMetrics(const QByteArray& bytes, qint64 latencyMs);

} // namespace tarnwick
