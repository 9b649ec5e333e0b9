#include "IdleResidency.h"

#include <algorithm>
#include <utility>

namespace tarnwick {

std::optional<double> IdleResidency::busyPercent(Time idle, Time now) {
    const Time idleBefore = std::exchange(idle_, idle);
    const Time elapsed = now - std::exchange(readAt_, now);
    if (idleBefore.count() == 0 || idle < idleBefore || elapsed.count() <= 0)
        return std::nullopt;
    // The counter moves in steps and is read a moment before the clock, so the quotient may exceed 1.
    return std::clamp(1 - (idle - idleBefore) / elapsed, 0.0, 1.0) * 100;
}

} // namespace tarnwick
