#pragma once

#include "ThisComputer.h"
#include "macos/MacWords.h"

#include <QHash>

#include <mutex>

namespace tarnwick {

/// The bytes of an integer as the kernel gives them.
template <typename Integer>
[[nodiscard]] QByteArray bytesOf(Integer number) {
    return {reinterpret_cast<const char*>(&number), sizeof number};
}

/// "kern.boottime"
[[nodiscard]] inline QByteArray bootTime(qint64 seconds) {
    return bytesOf(seconds) + bytesOf(qint64{999'999});
}

/// An accelerator that reports its utilisation.
[[nodiscard]] inline QVariantMap accelerator(const QVariant& percent) {
    return {{QStringLiteral("PerformanceStatistics"), QVariantMap{{QStringLiteral("Device Utilization %"), percent}}}};
}

/// Kernel readings that a test sets; at first nothing can be read.
class ScriptedKernel : public KernelReadings {
public:
    QHash<QByteArray, QByteArray> values;
    std::optional<QString> makersName;
    std::optional<CpuTicks> ticks;
    std::optional<MemoryPages> pages;
    QList<QVariantMap> cards;
    OperatingSystem os;
    ThermalState thermal = ThermalState::unknown;
    std::optional<VolumeSpace> volume;
    qint64 now = 0;    ///< seconds since 1970
    QStringList asked; ///< which figures were read, in order: "cpu", "gpu", "ram", "disk"

    std::optional<QByteArray> value(const char* name) override {
        const auto found = values.constFind(name);
        return found == values.cend() ? std::nullopt : std::optional(*found);
    }
    std::optional<QString> makersModelName() override { return makersName; }
    std::optional<CpuTicks> cpuTicks() override { return note(QStringLiteral("cpu")), ticks; }
    std::optional<MemoryPages> memoryPages() override { return note(QStringLiteral("ram")), pages; }
    QList<QVariantMap> accelerators() override { return note(QStringLiteral("gpu")), cards; }
    OperatingSystem operatingSystem() override { return os; }
    ThermalState thermalState() override { return thermal; }
    std::optional<VolumeSpace> homeVolume() override { return note(QStringLiteral("disk")), volume; }
    qint64 wallClockSeconds() override { return now; }

private:
    /// Some figures are read in the background.
    void note(const QString& figure) {
        static std::mutex mutex;
        const std::lock_guard lock(mutex);
        asked += figure;
    }
};

/// Temperature sensors that a test sets; at first there is no sensor service.
class ScriptedSensors : public TemperatureSensors {
public:
    std::optional<QList<TemperatureReading>> readings;
    QList<SensorGroup> asked; ///< in order

    std::optional<QList<TemperatureReading>> read(SensorGroup group) override {
        asked += group;
        if (!readings)
            return std::nullopt;
        QList<TemperatureReading> found;
        for (const TemperatureReading& reading : *readings) {
            const ThermalSummary its = surveyThermals(QList{reading});
            const SensorGroup ownGroup = its.ssd          ? SensorGroup::drives
                                         : its.avgSoc > 0 ? SensorGroup::processor
                                                          : SensorGroup::others;
            if (ownGroup == group)
                found += reading;
        }
        return found;
    }
};

/// `ThisComputer` over scripted readings and a scripted clock. As made, it is a Mac mini whose info() is macMini():
/// CPU 12.5 %, GPU 8 %, 11 of 16 GB, SoC 41.25 °C on average and 57.8 °C at most, SSD 32 °C, 120.3 of 460.4 GB of disk.
/// The clock does not move, so each figure is read once; letTimePass() makes the next question read again.
class SampleComputer {
public:
    ScriptedKernel kernel;
    ScriptedSensors sensors;
    std::chrono::nanoseconds now = std::chrono::hours(1);
    ThisComputer computer;

    explicit SampleComputer(const SystemWords& words = macWords)
        : computer(kernel, sensors, words, [this] { return now; }, {.grace = {}, .patience = std::chrono::minutes(1)}) {
        constexpr qint64 gibibyte = qint64{1} << 30;
        kernel.values = {{"hw.model", "Mac14,12"},
                         {"machdep.cpu.brand_string", "Apple M2 Pro"},
                         {"hw.perflevel0.physicalcpu", bytesOf(qint32{4})},
                         {"hw.perflevel1.physicalcpu", bytesOf(qint32{6})},
                         {"hw.memsize", bytesOf(16 * gibibyte)},
                         {"kern.osrelease", "23.5.0"},
                         {"kern.boottime", bootTime(1000)}};
        kernel.now = 1000 + 14 * 86'400 + 6 * 3600;
        kernel.os = {.name = QStringLiteral("macOS"),
                     .version = QStringLiteral("14.5"),
                     .versionText = QStringLiteral("Version 14.5 (Build 23F79)")};
        kernel.thermal = ThermalState::nominal;
        setCpu(12.5);
        kernel.cards = {accelerator(8)};
        setRam(68.75);
        kernel.volume = VolumeSpace{.size = 494'350'735'770, .free = 365'180'000'000};
        sensors.readings = {{{QStringLiteral("PMU tdie1"), 57.8},
                             {QStringLiteral("NAND CH0 temp"), 54.95},
                             {QStringLiteral("PMU tdev2"), 24.7},
                             {QStringLiteral("NAND CH0 temp"), 32.0}}};
    }

    /// Makes the next CPU measurement find this share of a thousand ticks busy.
    void setCpu(double percent) {
        const CpuTicks before = kernel.ticks.value_or(CpuTicks{});
        const auto busy = static_cast<std::uint32_t>(percent * 10);
        kernel.ticks = CpuTicks{.user = before.user + busy, .idle = before.idle + 1000 - busy};
    }
    /// Used share of 16 GB.
    void setRam(double percent) {
        constexpr double pages = 1 << 20;
        kernel.pages = MemoryPages{.active = static_cast<std::uint32_t>(percent / 100 * pages), .pageSize = 16'384};
    }
    void letTimePass() { now += ThisComputer::maximumAge; }

    [[nodiscard]] static MacHardwareInfo macMini() {
        MacHardwareInfo info;
        info.modelName = QStringLiteral("Mac mini");
        info.modelIdentifier = QStringLiteral("Mac14,12");
        info.chip = QStringLiteral("Apple M2 Pro");
        info.cpuCores = QStringLiteral("10 Cores (4 Performance + 6 Efficiency)");
        info.gpuCores = QStringLiteral("Integrated GPU (Metal)");
        info.memoryString = QStringLiteral("16 GB Unified Memory");
        info.osVersion = QStringLiteral("macOS 14.5");
        info.osBuild = QStringLiteral("Version 14.5 (Build 23F79)");
        info.kernelVersion = QStringLiteral("23.5.0");
        info.uptimeString = QStringLiteral("14d 6h 0m");
        info.thermalState = QStringLiteral("Nominal (Cool & Quiet)");
        info.avgSocTemp = 41.25;
        info.peakSocTemp = 57.8;
        info.ssdTemp = 32;
        info.cpuUsagePercent = 12.5;
        info.gpuUsagePercent = 8;
        info.ramUsagePercent = 68.75;
        info.ramUsedGB = 11;
        info.ramTotalGB = 16;
        info.sensors = {{QStringLiteral("PMU tdie1"), 57.8, QStringLiteral("SoC Die (CPU/GPU)")},
                        {QStringLiteral("NAND CH0 temp"), 54.95, QStringLiteral("Storage (SSD)")},
                        {QStringLiteral("NAND CH0 temp"), 32, QStringLiteral("Storage (SSD)")},
                        {QStringLiteral("PMU tdev2"), 24.7, QStringLiteral("Power Delivery (PMU)")}};
        return info;
    }
};

} // namespace tarnwick
