#include "MacHardwareCollector.h"

#include "MacHardwareTexts.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace tarnwick {

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

bool startsWithAny(const QString& text, std::initializer_list<QStringView> prefixes) {
    return std::any_of(
        prefixes.begin(), prefixes.end(), [&](QStringView prefix) { return text.startsWith(prefix); });
}

} // namespace

double SpaceUsage::percent() const {
    return totalGB > 0 ? std::clamp(usedGB / totalGB * 100, 0.0, 100.0) : 0;
}

namespace MacHardwareCollector {

MacHardwareInfo describe(KernelReadings& kernel, const SystemWords& words) {
    using namespace MacHardwareTexts;
    MacHardwareInfo info;
    info.modelIdentifier = kernelText(kernel.value("hw.model")).value_or(words.model.toString());
    info.modelName = kernel.makersModelName().value_or(friendlyModelName(info.modelIdentifier));
    info.chip = kernelText(kernel.value("machdep.cpu.brand_string")).value_or(words.chip.toString());
    info.cpuCores = coreText(kernelInt(kernel.value("hw.perflevel0.physicalcpu")),
                             kernelInt(kernel.value("hw.perflevel1.physicalcpu")), words);
    info.gpuCores = words.gpuCores.toString();
    info.memoryString = memoryText(kernelInt64(kernel.value("hw.memsize")), words);
    info.osVersion = systemText(kernel.operatingSystem());
    info.kernelVersion = kernelText(kernel.value("kern.osrelease")).value_or(words.kernel.toString());
    return info;
}

MacHardwareInfo collect(MacHardwareInfo description, KernelReadings& kernel, const ThermalSummary& thermals,
                        double cpuPercent, std::optional<double> gpuPercent, const SpaceUsage& ram) {
    MacHardwareInfo info = std::move(description);
    info.osBuild = kernel.operatingSystem().versionText;
    info.uptimeString = MacHardwareTexts::uptimeText(kernel.value("kern.boottime"), kernel.wallClockSeconds());
    info.thermalState = MacHardwareTexts::thermalStateText(kernel.thermalState());
    info.avgSocTemp = thermals.avgSoc;
    info.peakSocTemp = thermals.peak;
    info.ssdTemp = thermals.ssd;
    info.sensors = thermals.sensors;
    info.cpuUsagePercent = cpuPercent;
    info.gpuUsagePercent = gpuPercent;
    info.ramUsagePercent = ram.percent();
    info.ramUsedGB = ram.usedGB;
    info.ramTotalGB = ram.totalGB;
    return info;
}

QString friendlyModelName(const QString& modelIdentifier) {
    const auto contains = [&](QStringView part) {
        return modelIdentifier.contains(part, Qt::CaseInsensitive);
    };
    if (contains(u"mini") || startsWithAny(modelIdentifier, {u"Mac16,10", u"Mac16,11", u"Mac14,3", u"Mac14,12"}))
        return u"Mac mini"_s;
    if (contains(u"Book"))
        return contains(u"Air") ? u"MacBook Air"_s : u"MacBook Pro"_s;
    if (contains(u"Studio") || startsWithAny(modelIdentifier, {u"Mac13,1", u"Mac13,2", u"Mac14,13", u"Mac14,14"}))
        return u"Mac Studio"_s;
    if (contains(u"iMac"))
        return u"iMac"_s;
    if (contains(u"Pro"))
        return u"Mac Pro"_s;
    return u"Apple Silicon Mac"_s;
}

double queryCpuUsage(const CpuTicks& now, const std::optional<CpuTicks>& previous) {
    const CpuTicks since = previous.value_or(CpuTicks{});
    const auto elapsed = [](std::uint32_t to, std::uint32_t from) {
        return static_cast<double>(to - from);
    };
    const double busy =
        elapsed(now.user, since.user) + elapsed(now.system, since.system) + elapsed(now.nice, since.nice);
    const double total = busy + elapsed(now.idle, since.idle);
    return total > 0 ? busy / total * 100 : 0;
}

std::optional<double> queryGpuUsage(const QList<QVariantMap>& accelerators) {
    for (const QVariantMap& properties : accelerators) {
        const QVariant statistics = properties.value(u"PerformanceStatistics"_s);
        if (statistics.typeId() != QMetaType::QVariantMap)
            continue;
        const QVariant utilisation = statistics.toMap().value(u"Device Utilization %"_s);
        if (isNumber(utilisation))
            return utilisation.toDouble();
    }
    return std::nullopt;
}

SpaceUsage queryRamUsage(std::optional<quint64> installedBytes, const std::optional<MemoryPages>& pages) {
    SpaceUsage usage;
    usage.totalGB = static_cast<double>(installedBytes.value_or(0)) / bytesPerGB;
    if (pages) {
        const double usedPages = static_cast<double>(pages->active) + pages->wired + pages->compressed;
        usage.usedGB = usedPages * static_cast<double>(pages->pageSize) / bytesPerGB;
    }
    return usage;
}

SpaceUsage queryDiskUsage(const std::optional<VolumeSpace>& volume) {
    if (!volume)
        return {};
    // Floating point, because a difference of two byte counts could overflow.
    const auto size = static_cast<double>(volume->size.value_or(0));
    const double used = std::max(0.0, size - static_cast<double>(volume->free.value_or(0)));
    return {.usedGB = toOneDecimal(used / bytesPerGB), .totalGB = toOneDecimal(size / bytesPerGB)};
}

ThermalSummary queryQuickThermals(const std::optional<QList<TemperatureReading>>& readings) {
    ThermalSummary summary = surveyThermals(readings);
    summary.sensors.clear();
    return summary;
}

std::optional<double> queryQuickSocTemp(const std::optional<QList<TemperatureReading>>& readings) {
    return presentReading(surveyThermals(readings).avgSoc);
}

} // namespace MacHardwareCollector

} // namespace tarnwick
