#include "ThisComputer.h"

#include "MacHardwareTexts.h"

#include <QPromise>

#include <algorithm>
#include <memory>
#include <utility>

namespace tarnwick {

std::chrono::nanoseconds ThisComputer::steadyTime() {
    return std::chrono::steady_clock::now().time_since_epoch();
}

ThisComputer::ThisComputer(KernelReadings& kernel, TemperatureSensors& sensors, const SystemWords& words, Clock clock,
                           ReadingPace background)
    : kernel_(kernel)
    , sensors_(sensors)
    , words_(words)
    , clock_(std::move(clock))
    , gpu_([this] { return MacHardwareCollector::queryGpuUsage(kernel_.accelerators()); }, std::nullopt,
           [&background] {
               background.period = maximumAge;
               return background;
           }()) {}

/// The value of the reading, which is taken again when it is too old.
template <typename Value, typename Take>
Value ThisComputer::current(Reading<Value>& reading, Take take) {
    const std::lock_guard lock(reading.mutex);
    const std::chrono::nanoseconds now = clock_();
    if (!reading.takenAt || now - *reading.takenAt >= maximumAge) {
        reading.value = take();
        reading.takenAt = now;
    }
    return reading.value;
}

double ThisComputer::cpuPercent() {
    return current(
        cpu_,
        [this]() -> double {
            const std::optional<CpuTicks> now = kernel_.cpuTicks();
            return now ? MacHardwareCollector::queryCpuUsage(*now, std::exchange(previousTicks_, now)) : 0;
        });
}

std::optional<double> ThisComputer::gpuPercent() {
    return gpu_.ask(gpuThread_, clock_());
}

SpaceUsage ThisComputer::ram() {
    return current(
        ram_,
        [this] {
            const std::optional<qint64> installed = MacHardwareTexts::kernelInt64(kernel_.value("hw.memsize"));
            return MacHardwareCollector::queryRamUsage(installed, kernel_.memoryPages());
        });
}

SpaceUsage ThisComputer::disk() {
    return current(
        disk_, [this] { return MacHardwareCollector::queryDiskUsage(kernel_.homeVolume()); });
}

QFuture<ProbedFigures> ThisComputer::figures() {
    const std::lock_guard lock(figuresMutex_);
    if (!figures_.isFinished())
        return figures_;
    auto promise = std::make_shared<QPromise<ProbedFigures>>();
    promise->start();
    figures_ = promise->future();
    figuresThread_.run({[this, promise = std::move(promise)] {
        ProbedFigures figures;
        // What may hang comes first, so that the others are not old when it answers.
        figures.disk = disk();
        figures.gpuPercent = gpu_.wait(clock_());
        figures.ram = ram();
        figures.cpuPercent = cpuPercent();
        promise->addResult(figures);
        promise->finish();
    }});
    return figures_;
}

std::optional<QList<TemperatureReading>> ThisComputer::temperatures(SensorGroup group) {
    return current(
        temperatures_.at(static_cast<std::size_t>(group)), [&] { return sensors_.read(group); });
}

ThermalSummary ThisComputer::thermals(SensorGroup group) {
    return MacHardwareCollector::queryQuickThermals(temperatures(group));
}

std::optional<double> ThisComputer::socTemperature() {
    return MacHardwareCollector::queryQuickSocTemp(temperatures(SensorGroup::processor));
}

MacHardwareInfo ThisComputer::description() {
    std::call_once(described_, [this] { description_ = MacHardwareCollector::describe(kernel_, words_); });
    return description_;
}

MacHardwareInfo ThisComputer::info() {
    QList<TemperatureReading> readings;
    for (const SensorGroup group : {SensorGroup::others, SensorGroup::processor, SensorGroup::drives})
        readings += temperatures(group).value_or(QList<TemperatureReading>());
    std::ranges::stable_sort(readings, {}, &TemperatureReading::position);
    return MacHardwareCollector::collect(description(), kernel_, surveyThermals(readings), cpuPercent(), gpuPercent(),
                                         ram());
}

} // namespace tarnwick
