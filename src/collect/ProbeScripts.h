#pragma once

#include "MacHardwareCollector.h"

#include <QString>

namespace tarnwick {

/// The shell scripts of a probe. Either prints one JSON object on one line: the probe line, see ProbePayload.h.
namespace ProbeScripts {

/// The remote command of every ssh probe; any POSIX shell runs it.
[[nodiscard]] QString remote();
/// The script of the local shell: it adds this computer's containers and load average to the given figures.
[[nodiscard]] QString local(double cpuPercent, double gpuPercent, const SpaceUsage& memory, const SpaceUsage& disk);

} // namespace ProbeScripts

} // namespace tarnwick
