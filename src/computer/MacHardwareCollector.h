#pragma once

#include "KernelReadings.h"
#include "SystemWords.h"
#include "ThermalSurvey.h"

#include <QList>
#include <QString>
#include <QVariantMap>

#include <optional>

namespace tarnwick {

/// How much of a memory or a volume is in use. "GB" is 2^30 bytes.
struct SpaceUsage {
    double usedGB = 0;
    double totalGB = 0;

    /// 0 to 100; 0 where the total is not known.
    [[nodiscard]] double percent() const;
    friend bool operator==(const SpaceUsage&, const SpaceUsage&) = default;
};

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
    std::optional<double> gpuUsagePercent; ///< absent when no graphics processor reports one
    double ramUsagePercent = 0;
    double ramUsedGB = 0;
    double ramTotalGB = 0;
    QList<MacThermalSensor> sensors; ///< hottest first

    friend bool operator==(const MacHardwareInfo&, const MacHardwareInfo&) = default;
};

/// Turns raw readings into figures. It has no state and reports no errors: an absent reading gives a neutral value. Any
/// thread. ThisComputer takes the readings and keeps what the next one needs.
namespace MacHardwareCollector {

/// The part of the record that never changes while the computer runs: names, cores, memory, system and kernel.
[[nodiscard]] MacHardwareInfo describe(KernelReadings& kernel, const SystemWords& words);
/// The full record: the description, the texts that change (uptime, thermal state, build), and the figures.
[[nodiscard]] MacHardwareInfo collect(MacHardwareInfo description, KernelReadings& kernel,
                                      const ThermalSummary& thermals, double cpuPercent,
                                      std::optional<double> gpuPercent, const SpaceUsage& ram);

/// The family name that a model identifier belongs to: "Mac mini" for "Mac14,12".
[[nodiscard]] QString friendlyModelName(const QString& modelIdentifier);
/// Percent of processor time busy between two samples, or since boot when there is no previous one; 0 when no tick
/// passed. Counters may wrap in between: differences are taken modulo 2^32.
[[nodiscard]] double queryCpuUsage(const CpuTicks& now, const std::optional<CpuTicks>& previous);
/// The utilisation of the first accelerator that reports one, unchanged; absent when none does.
[[nodiscard]] std::optional<double> queryGpuUsage(const QList<QVariantMap>& accelerators);
[[nodiscard]] SpaceUsage queryRamUsage(std::optional<quint64> installedBytes, const std::optional<MemoryPages>& pages);
/// Both figures rounded to one decimal.
[[nodiscard]] SpaceUsage queryDiskUsage(const std::optional<VolumeSpace>& volume);
/// The survey without its list of sensors.
[[nodiscard]] ThermalSummary queryQuickThermals(const std::optional<QList<TemperatureReading>>& readings);
/// The mean SoC temperature, when it is greater than 0.
[[nodiscard]] std::optional<double> queryQuickSocTemp(const std::optional<QList<TemperatureReading>>& readings);

} // namespace MacHardwareCollector

} // namespace tarnwick
