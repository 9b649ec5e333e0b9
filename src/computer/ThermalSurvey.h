#pragma once

#include "TemperatureSensors.h"

#include <QList>
#include <QString>

#include <optional>

namespace tarnwick {

/// One plausible temperature reading.
struct MacThermalSensor {
    QString name; ///< as published, or "Sensor"; several sensors may share a name
    double tempCelsius = 0;
    QString category; ///< one of ThermalCategory's texts
    friend bool operator==(const MacThermalSensor&, const MacThermalSensor&) = default;
};

namespace ThermalCategory {
inline constexpr QStringView storage = u"Storage (SSD)";
inline constexpr QStringView socDie = u"SoC Die (CPU/GPU)";
inline constexpr QStringView powerDelivery = u"Power Delivery (PMU)";
inline constexpr QStringView thermalZone = u"Thermal Zone";
} // namespace ThermalCategory

/// All sensors in summary, in °C.
struct ThermalSummary {
    double avgSoc = 0;               ///< mean of die and power-delivery readings; 0 when there are none
    double peak = 0;                 ///< largest of them; 0 when there are none
    std::optional<double> ssd;       ///< last storage reading in enumeration order
    QList<MacThermalSensor> sensors; ///< every accepted reading, hottest first, equal ones in enumeration order
    friend bool operator==(const ThermalSummary&, const ThermalSummary&) = default;
};

/// A mean or a peak of the summary; absent where it is 0.
[[nodiscard]] constexpr std::optional<double> presentReading(double celsius) {
    return celsius > 0 ? std::optional(celsius) : std::nullopt;
}

/// Filters, classifies and condenses readings. Absent readings (no sensor service) give the empty summary.
[[nodiscard]] ThermalSummary surveyThermals(const std::optional<QList<TemperatureReading>>& readings);

} // namespace tarnwick
