#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace tarnwick {

/// One temperature sensor as its driver publishes it.
struct TemperatureReading {
    std::optional<QString> product; ///< its name; carries its role: "tdie" (die), "tdev" (power delivery), "SSD"
    std::optional<double> celsius;  ///< absent when the sensor gives no reading now
    qsizetype position = 0;         ///< in the enumeration of all groups, where the system has one
};

/// What a sensor measures. A question about one group reads no sensor of another.
enum class SensorGroup {
    processor, ///< dies and power delivery
    drives,
    others,
};

/// The temperature sensors of this computer. Any thread.
class TemperatureSensors {
public:
    virtual ~TemperatureSensors() = default;

    /// The group's sensors in enumeration order, as they were when last read: sensors that cost more to read are read
    /// less often. Does not wait for slow ones. Absent when the system has no sensor service at all.
    [[nodiscard]] virtual std::optional<QList<TemperatureReading>> read(SensorGroup group) = 0;
};

} // namespace tarnwick
