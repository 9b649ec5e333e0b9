#pragma once

#include "DeviceAccess.h"
#include "KernelReadings.h"

namespace tarnwick {

/// What the kernel's thermal zones say: the worst trip point that any zone is at or above. Those for fans and for
/// slowing down count only where the kernel does so by itself; nominal below all of these. Unknown when there are none,
/// unless it is critical. May take long, because firmware answers for some zones. `root` is the folder that holds sys,
/// ending in "/".
[[nodiscard]] ThermalState readLinuxThermalState(const QString& root, const DeviceAccess& access);

} // namespace tarnwick
