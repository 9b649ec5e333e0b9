#include "Instant.h"

#include <cmath>

namespace tarnwick {

namespace {
/// 2001-01-01T00:00:00Z in milliseconds since 1970.
constexpr qint64 referenceDateMs = 978'307'200'000;
} // namespace

Instant Instant::now() {
    return {static_cast<double>(QDateTime::currentMSecsSinceEpoch() - referenceDateMs) / 1000.0};
}

QDateTime Instant::toDateTime() const {
    // A stored number can be anything, and QDateTime's range is a little smaller than that of qint64 milliseconds.
    constexpr double limitMs = 8.64e15;
    const double ms = std::fmin(std::fmax(std::round(secondsSinceReferenceDate * 1000.0), -limitMs), limitMs);
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(ms) + referenceDateMs);
}

} // namespace tarnwick
