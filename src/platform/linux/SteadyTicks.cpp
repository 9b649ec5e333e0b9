#include "SteadyTicks.h"

#include <algorithm>

namespace tarnwick {

namespace {

/// A second of one processor, in ticks of /proc. While our idle counter waits for the kernel's, the load shows 100 %:
/// after a drop of this size that is for one reading, about what a new beginning costs as well; after a larger one it
/// could be for hours. The kernel takes back a few ticks of idle time now and then (proc(5)), but all the idle time of
/// a processor that goes offline.
constexpr quint64 largeDrop = 100;

} // namespace

SteadyTicks::Counts SteadyTicks::advance(const Counts& now) {
    bool beginsAgain = false;
    for (std::size_t i = 0; i < now.size(); ++i)
        beginsAgain = beginsAgain || now.at(i) + largeDrop < seen_.at(i);
    for (std::size_t i = 0; i < now.size(); ++i) {
        const quint64 next = beginsAgain ? now.at(i) : std::max(now.at(i), seen_.at(i));
        if (!beginsAgain)
            steady_.at(i) += next - seen_.at(i);
        seen_.at(i) = next;
    }
    return steady_;
}

} // namespace tarnwick
