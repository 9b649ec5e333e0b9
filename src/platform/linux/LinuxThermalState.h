#pragma once

#include "KernelReadings.h"

namespace tarnwick {

/// The thermal state by the kernel's thermal zones: the worst trip point that any zone has reached. Nominal below all;
/// unknown when no zone has both a temperature and a trip point. `root` is the folder that holds sys, ending in "/".
[[nodiscard]] ThermalState readLinuxThermalState(const QString& root);

} // namespace tarnwick
