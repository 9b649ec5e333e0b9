#pragma once

#include "KernelReadings.h"
#include "MacHardwareCollector.h"

#include <QList>
#include <QVariantMap>

#include <optional>

namespace tarnwick {

/// From raw counters to loads. Pure; any thread.
namespace LoadArithmetic {

/// Percent of processor time busy between two samples, or since boot when there is no previous one; 0 when no tick
/// passed. Counters that wrapped in between count on: differences are taken modulo 2^32.
[[nodiscard]] double cpuPercent(const CpuTicks& now, const std::optional<CpuTicks>& previous);

/// Used memory from installed bytes and page counts; what is absent counts as 0. The percentage stays within 0 to 100.
[[nodiscard]] MacHardwareCollector::RamUsage ramUsage(std::optional<quint64> installedBytes,
                                                      const std::optional<MemoryPages>& pages);

/// Used and total space; both 0 for an absent volume.
[[nodiscard]] MacHardwareCollector::DiskUsage diskUsage(const std::optional<VolumeSpace>& volume);

/// The utilisation of the first accelerator that tells one, unchanged; 0 when none does.
[[nodiscard]] double gpuPercent(const QList<QVariantMap>& accelerators);

} // namespace LoadArithmetic

} // namespace tarnwick
