#pragma once

#include "ServerMetrics.h"

#include <QByteArray>

namespace tarnwick {

/// The metrics of a probe line. Never fails: bytes that are not exactly one JSON object with fields of the right types
/// (white space around it aside) give the offline record "Failed to parse metrics: " and one short line, with latency
/// 0. Values are not limited to a range; of a key that is there twice the last one counts.
[[nodiscard]] ServerMetrics parseMetrics(const QByteArray& bytes, qint64 latencyMs);

} // namespace tarnwick
