#pragma once

#include <chrono>
#include <optional>

namespace tarnwick {

/// How busy a part of a processor is, by a counter of the time it spent idle. Pure; not thread-safe.
class IdleResidency {
public:
    /// Percent of the time since the last call in which it was not idle, 0 to 100. `now` is monotonic. Absent at the
    /// first call, because there is no interval yet, and when the counter has dropped, because the driver was loaded
    /// again. Absent also while the counter is 0: then the idle state is switched off.
    [[nodiscard]] std::optional<double> busyPercent(std::chrono::nanoseconds idle, std::chrono::nanoseconds now);

private:
    std::chrono::nanoseconds idle_{0};
    std::chrono::nanoseconds readAt_{0};
};

} // namespace tarnwick
