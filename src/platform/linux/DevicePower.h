#pragma once

#include "KeptFile.h"

#include <QString>

#include <chrono>

namespace tarnwick {

/// Whether a device may be asked just now. Asking one that sleeps would wake it, and asking one every second would
/// keep it from falling asleep.
class DevicePower {
public:
    DevicePower() = default;
    /// `deviceFolder` is the device's folder in /sys, ending in "/".
    explicit DevicePower(const QString& deviceFolder);

    [[nodiscard]] bool isAsleep() const;
    /// It was left alone a short while ago.
    [[nodiscard]] bool isResting() const { return Clock::now() < restsUntil_; }
    /// Leaves a graphics card that may fall asleep alone for longer than its driver waits for; any other device stays
    /// as it is. True when it rests now.
    bool rest();

private:
    using Clock = std::chrono::steady_clock;

    KeptFile status_;
    bool isSecondCard_ = false;
    Clock::time_point restsUntil_;
};

} // namespace tarnwick
