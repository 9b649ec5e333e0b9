#pragma once

#include "BackgroundReading.h"
#include "HwmonDevice.h"
#include "TemperatureSensors.h"

#include <QStringList>
#include <QThreadPool>

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace tarnwick {

/// How the sensors are read; a test puts its own in place.
struct SensorAccess {
    /// Monotonic time.
    std::function<std::chrono::nanoseconds()> clock = [] {
        return std::chrono::steady_clock::now().time_since_epoch();
    };
    HwmonDevice::ReadInput readInput = [](const KeptFile& input, std::span<char> buffer) {
        return input.read(buffer);
    };
    /// The longest time that one question waits for readings.
    std::chrono::milliseconds patience{5};
};

/// The temperatures of the kernel's hardware-monitoring devices, by device number, NVMe drives last and a drive's
/// composite temperature last of all. Devices that sleep are not woken. Processors are read whenever they are asked
/// for, drives every 30 s, others every 10 s, all of them on threads of their own: who asks waits for those that
/// answer at once, and gets the last reading of the others.
class LinuxTemperatureSensors final : public TemperatureSensors {
public:
    /// `root` is the folder that holds sys.
    explicit LinuxTemperatureSensors(const QString& root = QStringLiteral("/"), SensorAccess access = {});

    [[nodiscard]] std::optional<QList<TemperatureReading>> read(SensorGroup group) override;

private:
    using Time = std::chrono::nanoseconds;
    struct Entry {
        std::shared_ptr<HwmonDevice> device;
        BackgroundReading<HwmonReadings> reading;
        std::optional<Time> startedAt;
        QStringList inputs; ///< its files and what they are called
        bool isGone = false;
    };

    void look(Time now);
    void scan(const QStringList& entries);
    void startDue(SensorGroup group, Time now);
    [[nodiscard]] Entry entryFor(const QString& driver, const QString& deviceFolder,
                                 std::vector<HwmonDevice::Sensor> sensors) const;

    const QString folder_; ///< ends in "/"
    const SensorAccess access_;
    std::mutex mutex_; ///< guards what follows
    bool exists_ = false;
    QStringList inputs_; ///< all of them, as at the last scan
    std::optional<Time> lookedAt_;
    Time scannedAt_{};
    bool sensorGone_ = false;
    std::vector<Entry> devices_;
    QThreadPool pool_; ///< the last member: it waits for its threads when it goes
};

} // namespace tarnwick
