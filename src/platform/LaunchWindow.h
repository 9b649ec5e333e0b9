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
    /// How often look() is to be called while children wait for their launch.
    static constexpr std::chrono::milliseconds lookPeriod{200};

    [[nodiscard]] std::size_t size() const { return size_; }
    /// Whether one more child may be launched.
    [[nodiscard]] bool hasRoom(Time now);
    /// A child is launched, and takes a place.
    void launch(Time now) { held_.insert(now); }
    /// A child that was launched then has ended.
    void end(Time launched);
    /// Absent ticks say nothing.
    void look(const std::optional<CpuTicks>& ticks);
    /// When the next child will be older than `patience`. Call while the window is full.
    [[nodiscard]] Time nextRelease() const { return *held_.begin() + patience; }

private:
    std::size_t size_ = 64;
    std::multiset<Time> held_; ///< when the children that hold a place were launched
    std::optional<CpuTicks> seen_;
    bool isBusy_ = false; ///< at the last look no processor had time left
};

} // namespace tarnwick
