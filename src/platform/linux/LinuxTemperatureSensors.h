#pragma once

#include "DevicePower.h"
#include "KeptFile.h"
#include "TemperatureSensors.h"

#include <QStringList>

#include <mutex>
#include <vector>

namespace tarnwick {

/// The temperatures of the kernel's hardware-monitoring devices, by device number, solid-state drives last and their
/// composite temperature last of all. Devices that sleep are not woken.
class LinuxTemperatureSensors final : public TemperatureSensors {
public:
    /// `root` is the folder that holds sys.
    explicit LinuxTemperatureSensors(const QString& root = QStringLiteral("/"));

    [[nodiscard]] std::optional<QList<TemperatureReading>> read() override;

private:
    struct Sensor {
        QString name;
        KeptFile input; ///< thousandths of a degree
    };
    struct Device {
        std::vector<Sensor> sensors;
        DevicePower power;
        QList<TemperatureReading> lastReadings; ///< those of a device that rests stay
    };

    void scan(const QStringList& folders);
    void readDevice(Device& device);

    const QString folder_; ///< ends in "/"
    std::mutex mutex_;
    bool exists_ = false;
    QStringList folders_; ///< as at the last scan
    std::vector<Device> devices_;
    bool sensorGone_ = false;
    int readsSinceScan_ = 0;
};

} // namespace tarnwick
