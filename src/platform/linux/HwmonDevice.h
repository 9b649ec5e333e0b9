#pragma once

#include "DeviceAccess.h"
#include "KeptFile.h"
#include "TemperatureSensors.h"

#include <QList>
#include <QString>

#include <chrono>
#include <optional>
#include <vector>

namespace tarnwick {

/// A disk that turns, seen by what the kernel sent to it. A disk goes to sleep by itself, and nothing that may be read
/// without root says so; but a disk that has just worked is awake.
class DiskActivity {
public:
    DiskActivity() = default;
    /// `blockFolder` is the disk's folder in /sys, ending in "/".
    explicit DiskActivity(const QString& blockFolder);

    [[nodiscard]] bool isSpinningDisk() const { return statistics_.isOpen(); }
    /// It read or wrote since the last time this was asked. False the first time.
    [[nodiscard]] bool hasWorked();

private:
    KeptFile statistics_;
    std::optional<QByteArray> lastCounts_;
};

/// The disk that turns behind a device; its folder ends in "/". Empty when there is none.
[[nodiscard]] QString spinningDisk(const QString& deviceFolder);

/// What a device's inputs say, in their order.
struct HwmonReadings {
    QList<std::optional<double>> celsius;
    bool isGone = false; ///< an input is no longer there
};

/// A hardware-monitoring device of the kernel. One thread at a time.
class HwmonDevice {
public:
    struct Sensor {
        QString name;
        SensorGroup group = SensorGroup::others;
        KeptFile input; ///< thousandths of a degree
    };

    /// `deviceFolder` is the folder in /sys of what is measured, ending in "/".
    HwmonDevice(const QString& driver, const QString& deviceFolder, std::vector<Sensor> sensors,
                const DeviceAccess& access);

    [[nodiscard]] const std::vector<Sensor>& sensors() const { return sensors_; }
    [[nodiscard]] bool has(SensorGroup group) const;
    /// How long a reading holds.
    [[nodiscard]] std::chrono::seconds period() const;
    /// Its driver asks firmware or an embedded controller, which may take long.
    [[nodiscard]] bool asksFirmware() const { return asksFirmware_; }
    /// As last read; nothing at first.
    [[nodiscard]] const HwmonReadings& last() const { return last_; }
    /// Reads the inputs now. A device that sleeps is not woken and says nothing; one that is left alone, so that it may
    /// fall asleep, says what it said last.
    [[nodiscard]] HwmonReadings read();

private:
    [[nodiscard]] bool isLeftAlone(std::chrono::nanoseconds now);

    std::vector<Sensor> sensors_;
    DeviceAccess access_;
    bool asksFirmware_ = false;
    bool isDrive_ = false;
    DeviceTurns turns_;
    DiskActivity disk_;
    HwmonReadings last_;
    std::chrono::nanoseconds lastReadAt_{};
};

} // namespace tarnwick
