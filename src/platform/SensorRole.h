#pragma once

#include "TemperatureSensors.h"

namespace tarnwick {

/// What a sensor's name says that it measures.
enum class SensorRole { storage, die, powerDelivery, other };

/// The role that a name carries, in any case of its letters.
[[nodiscard]] SensorRole sensorRole(const QString& product);
/// The group of the sensors of that role.
[[nodiscard]] SensorGroup sensorGroup(const QString& product);

} // namespace tarnwick
