#pragma once

#include <QString>

namespace tarnwick::LinuxRoutes {

/// As KernelReadings::hasDefaultRoute(), from proc/net/route and proc/net/ipv6_route below `root`, which ends in "/".
[[nodiscard]] bool hasDefault(const QString& root);

} // namespace tarnwick::LinuxRoutes
