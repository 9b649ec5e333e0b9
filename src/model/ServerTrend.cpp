#include "ServerTrend.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tarnwick {

namespace {

template <typename Number>
Number rounded(double value) {
    const double limit = std::numeric_limits<Number>::max();
    return static_cast<Number>(std::isnan(value) ? 0 : std::clamp(std::round(value), 0.0, limit));
}

} // namespace

void ServerTrend::note(const ServerMetrics& metrics) {
    const double number = std::floor(metrics.lastChecked.secondsSinceReferenceDate / slotSeconds);
    if (!(number >= 0 && number < static_cast<double>(std::numeric_limits<std::int64_t>::max())))
        return;
    const auto now = static_cast<std::int64_t>(number);
    if (now < latest_ || now - latest_ >= static_cast<std::int64_t>(slotCount))
        slots_.fill({});
    else
        for (std::int64_t skipped = latest_ + 1; skipped < now; ++skipped)
            slot(skipped) = {};
    latest_ = now;
    slot(now) = {.latency = rounded<std::uint16_t>(static_cast<double>(metrics.latencyMs)),
                 .halfPercents = {rounded<std::uint8_t>(metrics.cpuPercent * 2),
                                  rounded<std::uint8_t>(metrics.memoryPercent() * 2),
                                  rounded<std::uint8_t>(metrics.diskPercent() * 2)},
                 .status = static_cast<std::uint8_t>(static_cast<int>(metrics.status()) + 1)};
}

template <typename Visit>
void ServerTrend::forEach(const Visit& visit) const {
    if (latest_ < 0)
        return;
    for (std::int64_t number = std::max<std::int64_t>(0, latest_ - static_cast<std::int64_t>(slotCount) + 1);
         number <= latest_; ++number) {
        const Slot& each = slots_.at(static_cast<std::size_t>(number) % slotCount);
        if (each.status != 0)
            visit(Instant{static_cast<double>(number) * slotSeconds}, each);
    }
}

QList<TrendPoint> ServerTrend::points(TrendFigure figure) const {
    QList<TrendPoint> points;
    forEach([&](Instant at, const Slot& slot) {
        const bool failed = slot.status == static_cast<int>(ServerHealthStatus::offline) + 1;
        const double value = figure == TrendFigure::latency
                                 ? slot.latency
                                 : slot.halfPercents.at(static_cast<std::size_t>(figure)) / 2.0;
        points.append({at, failed ? std::nullopt : std::optional(value)});
    });
    return points;
}

QList<HealthSpell> ServerTrend::spells() const {
    QList<HealthSpell> spells;
    forEach([&](Instant at, const Slot& slot) {
        const auto status = static_cast<ServerHealthStatus>(slot.status - 1);
        const bool follows = !spells.isEmpty() && at.secondsSince(spells.last().until) <= longestGapSeconds;
        if (follows)
            spells.last().until = at;
        if (!follows || spells.last().status != status)
            spells.append({status, at, at});
    });
    return spells;
}

} // namespace tarnwick
