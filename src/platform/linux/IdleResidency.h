#pragma once

#include <chrono>
#include <optional>

namespace tarnwick {

/// How busy a part of a processor is, by a counter of the time it spent idle. Pure; not thread-safe.
class IdleResidency {
public:
    /// In floating point, because a driver may say anything.
    using Time = std::chrono::duration<double, std::nano>;

    /// Percent of the time since the last call in which it was not idle, 0 to 100. `now` is monotonic. Absent at the
    /// first call, because there is no interval yet, and when the counter has dropped, because the driver was loaded
    /// again. Absent also while the counter is 0: then the idle state is switched off.
    [[nodiscard]] std::optional<double> busyPercent(Time idle, Time now);

private:
    Time idle_{0};
    Time readAt_{0};
};

} // namespace tarnwick
