#pragma once

#include "BackgroundReading.h"
#include "DeviceAccess.h"
#include "HwmonDevice.h"
#include "TemperatureSensors.h"

#include <QStringList>

#include <chrono>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace tarnwick {

/// The temperatures of the kernel's hardware-monitoring devices, by device number, NVMe drives last and a drive's
/// composite temperature last of all. Devices that sleep are not woken. Processors are read whenever they are asked
/// for, drives every 30 s, others every 10 s, all of them on threads of their own: who asks gets the last readings, and
/// waits only for devices that answer at once and have not been asked for a while.
class LinuxTemperatureSensors final : public TemperatureSensors {
public:
    /// `root` is the folder that holds sys.
    explicit LinuxTemperatureSensors(const QString& root = QStringLiteral("/"), DeviceAccess access = {});

    [[nodiscard]] std::optional<QList<TemperatureReading>> read(SensorGroup group) override;

private:
    using Time = std::chrono::nanoseconds;
    struct Entry {
        std::shared_ptr<HwmonDevice> device;
        BackgroundReading<HwmonReadings> reading;
        QStringList inputs; ///< its files and what they are called
        bool isGone = false;
    };

    void look(Time now);
    void scan(const QStringList& entries);
    void startDue(SensorGroup group, Time now);
    [[nodiscard]] Entry entryFor(const QString& driver, const QString& deviceFolder,
                                 std::vector<HwmonDevice::Sensor> sensors) const;

    const QString folder_; ///< ends in "/"
    const DeviceAccess access_;
    std::mutex mutex_; ///< guards what follows
    bool exists_ = false;
    QStringList inputs_; ///< all of them, as at the last scan
    std::optional<Time> lookedAt_;
    Time scannedAt_{};
    bool sensorGone_ = false;
    std::vector<Entry> devices_;
    BackgroundThreads quickThreads_{4};
    BackgroundThreads slowThreads_{4}; ///< of their own, so that no quick reading is behind a slow one
};

} // namespace tarnwick
