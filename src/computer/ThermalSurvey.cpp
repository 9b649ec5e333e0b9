#include "ThermalSurvey.h"

#include "SensorRole.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr double lowestPlausible = 15.0;   // °C, exclusive
constexpr double highestPlausible = 125.0; // °C, exclusive

/// In the order of SensorRole.
constexpr std::array categories{ThermalCategory::storage, ThermalCategory::socDie, ThermalCategory::powerDelivery,
                                ThermalCategory::thermalZone};

QStringView categoryOf(const QString& sensorName) {
    return categories.at(static_cast<std::size_t>(sensorRole(sensorName)));
}

} // namespace

ThermalSummary surveyThermals(const std::optional<QList<TemperatureReading>>& readings) {
    ThermalSummary summary;
    if (!readings)
        return summary;
    double socSum = 0;
    int socCount = 0;
    for (const TemperatureReading& reading : *readings) {
        // In this form the test also rejects NaN.
        if (!reading.celsius || !(*reading.celsius > lowestPlausible && *reading.celsius < highestPlausible))
            continue;
        const double celsius = *reading.celsius;
        const QString name = reading.product.value_or(u"Sensor"_s);
        const QStringView category = categoryOf(name);
        if (category == ThermalCategory::storage) {
            summary.ssd = celsius;
        } else if (category != ThermalCategory::thermalZone) {
            socSum += celsius;
            ++socCount;
            summary.peak = std::max(summary.peak, celsius);
        }
        summary.sensors.append({name, celsius, category.toString()});
    }
    if (socCount > 0)
        summary.avgSoc = socSum / socCount;
    std::stable_sort(
        summary.sensors.begin(), summary.sensors.end(),
        [](const MacThermalSensor& a, const MacThermalSensor& b) { return a.tempCelsius > b.tempCelsius; });
    return summary;
}

} // namespace tarnwick
