#include "LaunchWindow.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <utility>

namespace tarnwick {

namespace {

constexpr std::size_t least = 16; // hosts take longer to answer than clients to ask, so this keeps processors busy
constexpr std::size_t most = 512;
constexpr std::uint32_t idleShare = 20; // with less than a twentieth idle, more children only wait

} // namespace

bool LaunchWindow::hasRoom(Time now) const {
    return static_cast<std::size_t>(std::distance(holders(now), running_.end())) < size_;
}

void LaunchWindow::end(Time launched, Time now) {
    running_.erase(running_.find(launched));
    if (!isBusy_ && now - launched <= patience)
        size_ = std::min(size_ + 1, most);
}

void LaunchWindow::look(const std::optional<CpuTicks>& ticks) {
    const std::optional<CpuTicks> before = std::exchange(seen_, ticks);
    if (!ticks || !before)
        return;
    const std::uint32_t idle = ticks->idle - before->idle;
    const std::uint32_t all =
        ticks->user - before->user + ticks->system - before->system + ticks->nice - before->nice + idle;
    isBusy_ = idle < all / idleShare;
    if (isBusy_)
        size_ = std::max(size_ - size_ / 4, least);
}

} // namespace tarnwick
