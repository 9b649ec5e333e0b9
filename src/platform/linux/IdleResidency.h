#pragma once

#include <chrono>
#include <optional>

namespace tarnwick {

/// How busy a part of a processor is, by a counter of the time it spent in its idle state. Pure; not thread-safe.
class IdleResidency {
public:
    using Clock = std::chrono::steady_clock;

    /// Percent of the time since the last call in which it was not idle, 0 to 100. Absent at the first call, because
    /// there is no interval yet, and when the counter has dropped, because the driver was loaded again. Absent also
    /// while the counter is 0: then the idle state is switched off.
    [[nodiscard]] std::optional<double> busyPercent(std::chrono::milliseconds idle, Clock::time_point now);

private:
    std::chrono::milliseconds idle_{0};
    Clock::time_point readAt_;
};

} // namespace tarnwick
