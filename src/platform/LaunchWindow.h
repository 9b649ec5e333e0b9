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

    /// A child that is older waits for its host, not for this computer, and holds no place any more.
    static constexpr std::chrono::seconds patience{5};
    /// The same while no processor has time left: then who waits for its host cannot be told from who waits for that.
    static constexpr std::chrono::seconds patienceWhileBusy{15};
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
    /// How long until the next child is too old to hold its place. Call while the window is full.
    [[nodiscard]] Time untilRelease(Time now) const { return *holders(now) - youngest(now); }

private:
    using Launches = std::multiset<Time>;

    /// Who was launched by then holds no place.
    [[nodiscard]] Time youngest(Time now) const { return now - (isBusy_ ? patienceWhileBusy : patience); }
    /// The first child that holds a place; all after it do, too.
    [[nodiscard]] Launches::const_iterator holders(Time now) const { return running_.upper_bound(youngest(now)); }

    std::size_t size_ = 64;
    Launches running_;
    std::optional<CpuTicks> seen_;
    bool isBusy_ = false; ///< at the last look no processor had time left
};

} // namespace tarnwick
