#pragma once

#include "KernelReadings.h"

#include <chrono>
#include <cstddef>
#include <optional>
#include <set>

namespace tarnwick {

/// How many children may run at once, when more wait than the computer can carry: a client that waits for a processor
/// misses its own time limits, and a healthy host looks dead. The window is wider while children end soon, and narrower
/// while no processor has time left. Pure; not thread-safe. Times are monotonic.
class LaunchWindow {
public:
    using Time = std::chrono::nanoseconds;

    /// A child that is older waits for its host, not for this computer, and holds no place any more. While no processor
    /// has time left that cannot be told, and one more child would only slow down the others: then all hold theirs.
    static constexpr std::chrono::seconds patience{5};
    /// How often look() is to be called while children wait for their launch.
    static constexpr std::chrono::milliseconds lookPeriod{200};

    /// Whether one more child may be launched.
    [[nodiscard]] bool hasRoom(Time now) const;
    /// A child is launched, and takes a place.
    void launch(Time now) { running_.insert(now); }
    /// A child that was launched then has ended.
    void end(Time launched, Time now);
    /// Absent ticks say nothing.
    void look(const std::optional<CpuTicks>& ticks);
    /// After how long to ask again, while there is no room and nothing else happens.
    [[nodiscard]] Time untilRelease(Time now) const { return isBusy_ ? lookPeriod : *holders(now) - (now - patience); }

private:
    using Launches = std::multiset<Time>;

    /// The first child that holds a place; all after it do, too.
    [[nodiscard]] Launches::const_iterator holders(Time now) const {
        return isBusy_ ? running_.begin() : running_.upper_bound(now - patience);
    }

    std::size_t size_ = 64;
    Launches running_;
    std::optional<CpuTicks> seen_;
    bool isBusy_ = false; ///< at the last look no processor had time left
};

} // namespace tarnwick
