#include "IdleResidency.h"

#include <algorithm>
#include <utility>

namespace tarnwick {

std::optional<double> IdleResidency::busyPercent(std::chrono::milliseconds idle, Clock::time_point now) {
    using Milliseconds = std::chrono::duration<double, std::milli>;
    const std::chrono::milliseconds idleBefore = std::exchange(idle_, idle);
    const Milliseconds elapsed = now - std::exchange(readAt_, now);
    if (idleBefore.count() == 0 || idle < idleBefore || elapsed.count() <= 0)
        return std::nullopt;
    // The counter moves in steps and is read a moment before the clock, so the quotient may exceed 1.
    return std::clamp(1 - Milliseconds(idle - idleBefore) / elapsed, 0.0, 1.0) * 100;
}

} // namespace tarnwick
