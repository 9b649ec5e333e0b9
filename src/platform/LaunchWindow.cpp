#include "LaunchWindow.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace tarnwick {

namespace {

constexpr std::size_t least = 16; // hosts take longer to answer than clients to ask, so this keeps processors busy
constexpr std::size_t most = 512;
constexpr std::uint32_t idleShare = 20; // with less than a twentieth idle, more children only wait

} // namespace

bool LaunchWindow::hasRoom(Time now) {
    held_.erase(held_.begin(), held_.upper_bound(now - patience));
    return held_.size() < size_;
}

void LaunchWindow::end(Time launched) {
    const auto place = held_.find(launched);
    if (place == held_.end())
        return;
    held_.erase(place);
    if (!isBusy_)
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
