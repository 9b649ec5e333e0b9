#pragma once

#include <QString>

namespace tarnwick {

/// What this computer says of itself, for the local probe line.
struct LocalMeasurements {
    double cpuPercent = 0;
    double gpuPercent = 0;
    double memoryUsedMB = 0;  ///< mebibytes
    double memoryTotalMB = 0; ///< mebibytes
    double diskUsedGB = 0;    ///< gibibytes
    double diskTotalGB = 0;   ///< gibibytes
};

/// The shell scripts of a probe. Either prints one JSON object on one line: the probe line, see ProbePayload.h.
namespace ProbeScripts {

/// The remote command of every ssh probe; any POSIX shell runs it.
[[nodiscard]] QString remote();
/// The script of the local shell: this computer's containers and load average, and the measurements in hand.
[[nodiscard]] QString local(const LocalMeasurements& now);

} // namespace ProbeScripts

} // namespace tarnwick
