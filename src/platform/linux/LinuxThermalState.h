#pragma once

#include "KernelReadings.h"

namespace tarnwick {

/// What the kernel's thermal zones say: the worst trip point that any zone is at or above. Nominal below all of them;
/// unknown when no zone has both a temperature and a trip point. `root` is the folder that holds sys, ending in "/".
[[nodiscard]] ThermalState readLinuxThermalState(const QString& root);

} // namespace tarnwick
