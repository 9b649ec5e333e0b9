#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace tarnwick {

/// One temperature sensor as its driver publishes it.
struct TemperatureReading {
    std::optional<QString> product; ///< its name; carries its role: "tdie" (die), "tdev" (power delivery), "SSD"
    std::optional<double> celsius;  ///< absent when the sensor gives no reading now
};

/// The temperature sensors of this computer. Any thread.
class TemperatureSensors {
public:
    virtual ~TemperatureSensors() = default;

    /// Every sensor in enumeration order, read now; absent when the system has no sensor service at all.
    [[nodiscard]] virtual std::optional<QList<TemperatureReading>> read() = 0;
};

} // namespace tarnwick
