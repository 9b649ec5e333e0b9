#include "LoadArithmetic.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace tarnwick::LoadArithmetic {

namespace {

constexpr double bytesPerGB = 1024.0 * 1024.0 * 1024.0;

double toOneDecimal(double value) {
    return std::round(value * 10) / 10;
}

bool isNumber(const QVariant& value) {
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::Float:
        return true;
    default:
        return false;
    }
}

} // namespace

double cpuPercent(const CpuTicks& now, const std::optional<CpuTicks>& previous) {
    const CpuTicks since = previous.value_or(CpuTicks{});
    const auto elapsed = [](std::uint32_t to, std::uint32_t from) {
        return static_cast<double>(to - from);
    };
    const double busy =
        elapsed(now.user, since.user) + elapsed(now.system, since.system) + elapsed(now.nice, since.nice);
    const double total = busy + elapsed(now.idle, since.idle);
    return total > 0 ? busy / total * 100 : 0;
}

MacHardwareCollector::RamUsage ramUsage(std::optional<quint64> installedBytes,
                                        const std::optional<MemoryPages>& pages) {
    MacHardwareCollector::RamUsage usage;
    usage.totalGB = static_cast<double>(installedBytes.value_or(0)) / bytesPerGB;
    if (!pages)
        return usage;
    const double usedPages = static_cast<double>(pages->active) + pages->wired + pages->compressed;
    usage.usedGB = usedPages * static_cast<double>(pages->pageSize) / bytesPerGB;
    if (usage.totalGB > 0)
        usage.percent = std::clamp(usage.usedGB / usage.totalGB * 100, 0.0, 100.0);
    return usage;
}

MacHardwareCollector::DiskUsage diskUsage(const std::optional<VolumeSpace>& volume) {
    if (!volume)
        return {};
    // In floating point, where no pair of byte counts can overflow.
    const auto size = static_cast<double>(volume->size.value_or(0));
    const double used = std::max(0.0, size - static_cast<double>(volume->free.value_or(0)));
    return {.usedGB = toOneDecimal(used / bytesPerGB), .totalGB = toOneDecimal(size / bytesPerGB)};
}

double gpuPercent(const QList<QVariantMap>& accelerators) {
    for (const QVariantMap& properties : accelerators) {
        const QVariant statistics = properties.value(u"PerformanceStatistics"_s);
        if (statistics.typeId() != QMetaType::QVariantMap)
            continue;
        const QVariant utilisation = statistics.toMap().value(u"Device Utilization %"_s);
        if (isNumber(utilisation))
            return utilisation.toDouble();
    }
    return 0;
}

} // namespace tarnwick::LoadArithmetic
