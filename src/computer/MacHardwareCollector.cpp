#include "MacHardwareCollector.h"

#include "LoadArithmetic.h"
#include "MacHardwareTexts.h"

#include <mutex>

using namespace Qt::StringLiterals;

namespace tarnwick::MacHardwareCollector {

namespace {

/// What stays as first read until the program ends.
struct Description {
    QString model;
    QString chip;
    QString cores;
    QString memory;
    QString system;
    QString kernel;
};

Description readDescription(KernelReadings& kernel) {
    using namespace MacHardwareTexts;
    return {
        .model = kernelText(kernel.value("hw.model")).value_or(u"Mac"_s),
        .chip = kernelText(kernel.value("machdep.cpu.brand_string")).value_or(u"Apple Silicon"_s),
        .cores = coreText(kernelInt(kernel.value("hw.perflevel0.physicalcpu")),
                          kernelInt(kernel.value("hw.perflevel1.physicalcpu"))),
        .memory = memoryText(kernelInt64(kernel.value("hw.memsize"))),
        .system = systemText(kernel.operatingSystem()),
        .kernel = kernelText(kernel.value("kern.osrelease")).value_or(u"Darwin"_s),
    };
}

} // namespace

MacHardwareInfo collect(KernelReadings& kernel, TemperatureSensors& sensors) {
    static const Description description = readDescription(kernel);
    const ThermalSummary thermals = surveyThermals(sensors.read());

    MacHardwareInfo info;
    info.thermalState = MacHardwareTexts::thermalStateText(kernel.thermalState());
    info.uptimeString = MacHardwareTexts::uptimeText(kernel.value("kern.boottime"), kernel.wallClockSeconds());
    info.cpuUsagePercent = queryCpuUsage(kernel);
    info.gpuUsagePercent = queryGpuUsage(kernel);
    const RamUsage ram = queryRamUsage(kernel);
    info.ramUsagePercent = ram.percent;
    info.ramUsedGB = ram.usedGB;
    info.ramTotalGB = ram.totalGB;
    info.modelName = kernel.makersModelName().value_or(MacHardwareTexts::friendlyModelName(description.model));
    info.osBuild = kernel.operatingSystem().versionText;
    info.modelIdentifier = description.model;
    info.chip = description.chip;
    info.cpuCores = description.cores;
    info.gpuCores = u"Integrated GPU (Metal)"_s;
    info.memoryString = description.memory;
    info.osVersion = description.system;
    info.kernelVersion = description.kernel;
    info.avgSocTemp = thermals.avgSoc;
    info.peakSocTemp = thermals.peak;
    info.ssdTemp = thermals.ssd;
    info.sensors = thermals.sensors;
    return info;
}

double queryCpuUsage(KernelReadings& kernel) {
    // The label tick, the views and the local probe's thread share one previous sample: each measurement spans the
    // time since the last one by anybody, so reading, computing and storing are one step.
    static std::mutex mutex;
    static std::optional<CpuTicks> previous;
    const std::lock_guard lock(mutex);
    const std::optional<CpuTicks> now = kernel.cpuTicks();
    if (!now)
        return 0;
    const double percent = LoadArithmetic::cpuPercent(*now, previous);
    previous = now;
    return percent;
}

double queryGpuUsage(KernelReadings& kernel) {
    return LoadArithmetic::gpuPercent(kernel.accelerators());
}

RamUsage queryRamUsage(KernelReadings& kernel) {
    const std::optional<qint64> installed = MacHardwareTexts::kernelInt64(kernel.value("hw.memsize"));
    return LoadArithmetic::ramUsage(installed, kernel.memoryPages());
}

DiskUsage queryDiskUsage(KernelReadings& kernel) {
    return LoadArithmetic::diskUsage(kernel.homeVolume());
}

ThermalSummary queryQuickThermals(TemperatureSensors& sensors) {
    ThermalSummary summary = surveyThermals(sensors.read());
    summary.sensors.clear();
    return summary;
}

std::optional<double> queryQuickSocTemp(TemperatureSensors& sensors) {
    const double average = surveyThermals(sensors.read()).avgSoc;
    return average > 0 ? std::optional(average) : std::nullopt;
}

} // namespace tarnwick::MacHardwareCollector
