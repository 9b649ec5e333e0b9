#pragma once

#include "KeptFile.h"

#include <QString>

#include <chrono>

namespace tarnwick {

/// Whether a device may be read now. Reading one that sleeps would wake it, and reading it every second would keep it
/// from falling asleep.
class DevicePower {
public:
    DevicePower() = default;
    /// `deviceFolder` is the device's folder in /sys, ending in "/".
    explicit DevicePower(const QString& deviceFolder);

    [[nodiscard]] bool isAsleep() const;
    /// rest() has left the device alone for the time being.
    [[nodiscard]] bool isResting() const { return Clock::now() < restsUntil_; }
    /// Leaves a second graphics card that is allowed to sleep now alone for longer than its driver waits before it lets
    /// the card sleep; does nothing for any other device.
    void rest();

private:
    using Clock = std::chrono::steady_clock;

    KeptFile status_;
    KeptFile control_; ///< of a second graphics card only
    Clock::time_point restsUntil_;
};

} // namespace tarnwick
