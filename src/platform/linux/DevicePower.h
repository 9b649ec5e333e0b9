#pragma once

#include "KeptFile.h"

#include <QHash>
#include <QString>

#include <chrono>
#include <memory>
#include <mutex>
#include <optional>

namespace tarnwick {

/// Whether a device may be read now. Reading one that sleeps would wake it, and reading it every second would keep it
/// from falling asleep. All who read a device share one, so that it gets its rest from all of them at the same time.
/// Any thread.
class DevicePower {
public:
    /// `deviceFolder` is the device's folder in /sys, ending in "/".
    explicit DevicePower(const QString& deviceFolder);

    [[nodiscard]] bool isAsleep() const;
    /// The device is no longer there; one of the same name may be.
    [[nodiscard]] bool isGone() const;
    /// Who has read the device in this round leaves it alone until the next one. A second graphics card that is allowed
    /// to sleep now has the next round when nobody has read it for longer than its driver waits before it lets the card
    /// sleep; any other device has one for each question. `now` is monotonic.
    [[nodiscard]] unsigned round(std::chrono::nanoseconds now);
    /// Someone has read the device. Returns the round. One that is busy stays awake anyway: the next round begins.
    unsigned noteRead(std::chrono::nanoseconds now, bool isBusy);

private:
    const KeptFile status_;
    KeptFile control_; ///< of a second graphics card only
    std::mutex mutex_; ///< guards what follows
    unsigned round_ = 0;
    std::chrono::nanoseconds restsUntil_{};
};

/// The devices that are read. Any thread.
class DevicePowers {
public:
    /// `deviceFolder` is the device's folder in /sys or a link to it, ending in "/".
    [[nodiscard]] std::shared_ptr<DevicePower> of(const QString& deviceFolder);

private:
    std::mutex mutex_;
    QHash<QString, std::weak_ptr<DevicePower>> known_; ///< by the folder's path without links
};

/// One reader's turns at a device. Not thread-safe.
class DeviceTurns {
public:
    /// At a device that may be read whenever one likes.
    DeviceTurns() = default;
    explicit DeviceTurns(std::shared_ptr<DevicePower> power) : power_(std::move(power)) {}

    /// Goes on from another reader's turns at the same device.
    void continueFrom(const DeviceTurns& other) {
        if (other.power_ == power_)
            readIn_ = other.readIn_;
    }

    [[nodiscard]] bool isAsleep() const { return power_ && power_->isAsleep(); }
    /// False while the reader is to leave the device alone. `now` is monotonic.
    [[nodiscard]] bool isDue(std::chrono::nanoseconds now) const { return !power_ || power_->round(now) != readIn_; }
    /// `isBusy`: the device has something to do, and would stay awake without us.
    void noteRead(std::chrono::nanoseconds now, bool isBusy = false) {
        if (power_)
            readIn_ = power_->noteRead(now, isBusy);
    }

private:
    std::shared_ptr<DevicePower> power_;
    std::optional<unsigned> readIn_; ///< the round of the last reading
};

} // namespace tarnwick
