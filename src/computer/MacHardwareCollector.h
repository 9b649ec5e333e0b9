#pragma once

#include "KernelReadings.h"
#include "TemperatureSensors.h"
#include "ThermalSurvey.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace tarnwick {

/// Everything about the computer the program runs on. "GB" is 2^30 bytes; temperatures in °C; percentages 0 to 100.
struct MacHardwareInfo {
    QString modelName;
    QString modelIdentifier;
    QString chip;
    QString cpuCores;
    QString gpuCores;
    QString memoryString;
    QString osVersion;
    QString osBuild;
    QString kernelVersion;
    QString uptimeString;
    QString thermalState;
    double avgSocTemp = 0;  ///< 0 when there is no such reading
    double peakSocTemp = 0; ///< 0 when there is no such reading
    std::optional<double> ssdTemp;
    double cpuUsagePercent = 0;
    double gpuUsagePercent = 0;
    double ramUsagePercent = 0;
    double ramUsedGB = 0;
    double ramTotalGB = 0;
    QList<MacThermalSensor> sensors; ///< hottest first

    friend bool operator==(const MacHardwareInfo&, const MacHardwareInfo&) = default;
};

/// Local hardware telemetry. Synchronous, quick, without errors: what cannot be read falls back to a neutral value.
/// Any thread, but collect(), which is for the main thread.
namespace MacHardwareCollector {

struct RamUsage {
    double usedGB = 0;
    double totalGB = 0;
    double percent = 0;
};
struct DiskUsage {
    double usedGB = 0;  ///< rounded to one decimal
    double totalGB = 0; ///< rounded to one decimal
};

/// The full record. The fixed description of the machine is read once per process and cached.
[[nodiscard]] MacHardwareInfo collect(KernelReadings& kernel = KernelReadings::system(),
                                      TemperatureSensors& sensors = TemperatureSensors::system());
/// Percent of processor time busy since the previous call by any caller; since boot on the first. Serialised.
[[nodiscard]] double queryCpuUsage(KernelReadings& kernel = KernelReadings::system());
/// The first accelerator that tells its utilisation; not clamped; 0 when none does.
[[nodiscard]] double queryGpuUsage(KernelReadings& kernel = KernelReadings::system());
[[nodiscard]] RamUsage queryRamUsage(KernelReadings& kernel = KernelReadings::system());
[[nodiscard]] DiskUsage queryDiskUsage(KernelReadings& kernel = KernelReadings::system());
/// The summary of the thermal survey; `sensors` is left empty.
[[nodiscard]] ThermalSummary queryQuickThermals(TemperatureSensors& sensors = TemperatureSensors::system());
/// The mean SoC temperature when it is greater than 0.
[[nodiscard]] std::optional<double> queryQuickSocTemp(TemperatureSensors& sensors = TemperatureSensors::system());

} // namespace MacHardwareCollector

} // namespace tarnwick
