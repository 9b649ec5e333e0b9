#pragma once

#include "ServerHealthStatus.h"
#include "ServerMetrics.h"

#include <QList>

#include <array>
#include <cstdint>
#include <optional>

namespace tarnwick {

enum class TrendFigure {
    cpu,     ///< percent, in steps of 0.5, 127 at most
    memory,  ///< as cpu
    disk,    ///< as cpu
    latency, ///< milliseconds, 65535 at most
};

struct TrendPoint {
    Instant at;
    std::optional<double> value; ///< absent where the probe failed
};

/// A time in which the health verdict was the same.
struct HealthSpell {
    ServerHealthStatus status = ServerHealthStatus::healthy;
    Instant from;  ///< the spell's first result
    Instant until; ///< the first result after it, or the spell's last one when nobody looked for long after that
};

/// What the last two hours of one server were like, in 1.5 KB: one result for each half minute, the latest.
class ServerTrend {
public:
    static constexpr double slotSeconds = 30;
    static constexpr std::size_t slotCount = 240;
    /// Between results that are further apart nothing is known.
    static constexpr double longestGapSeconds = 360;

    /// Results come in the order of their times; one from earlier means that the clock was set back, and begins anew.
    void note(const ServerMetrics& metrics);

    /// Oldest first, none older than two hours before the latest result.
    [[nodiscard]] QList<TrendPoint> points(TrendFigure figure) const;
    /// Oldest first.
    [[nodiscard]] QList<HealthSpell> spells() const;

private:
    struct Slot {
        std::uint16_t latency = 0;
        std::array<std::uint8_t, 3> halfPercents{}; ///< CPU, memory, disk
        std::uint8_t status = 0;                    ///< one more than ServerHealthStatus; 0: no result
    };

    [[nodiscard]] Slot& slot(std::int64_t number) { return slots_.at(static_cast<std::size_t>(number) % slotCount); }
    /// Calls `visit` with the time and the content of each slot with a result, oldest first.
    template <typename Visit>
    void forEach(const Visit& visit) const;

    std::array<Slot, slotCount> slots_{}; ///< a ring: a slot's place is its number modulo their count
    std::int64_t latest_ = -1;            ///< the number of the latest: its time since the reference date in slots
};

} // namespace tarnwick
