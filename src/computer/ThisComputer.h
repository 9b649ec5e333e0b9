#pragma once

#include "BackgroundReading.h"
#include "BackgroundThreads.h"
#include "MacHardwareCollector.h"

#include <QFuture>

#include <array>
#include <chrono>
#include <functional>
#include <mutex>
#include <optional>

namespace tarnwick {

/// What a probe tells of this computer, measured for it.
struct ProbedFigures {
    double cpuPercent = 0;
    std::optional<double> gpuPercent;
    SpaceUsage ram;
    SpaceUsage disk;
};

/// The computer that the program runs on. It owns the previous CPU sample, so that all who ask share one, and the last
/// readings with their age: two questions within `maximumAge` get the same figures. Nothing is read before it is
/// asked for. Any thread; while a figure takes long to read, the others can be asked for. What a driver that hangs
/// holds up is read in the background: only disk() and whoever waits for figures() have to wait for it. A figure that
/// cannot be read is 0, or absent where it is optional. "GB" is 2^30 bytes.
class ThisComputer {
public:
    /// Monotonic time.
    using Clock = std::function<std::chrono::nanoseconds()>;
    [[nodiscard]] static std::chrono::nanoseconds steadyTime();

    /// A little less than the second after which the status item's label asks again.
    static constexpr std::chrono::milliseconds maximumAge{900};

    /// All three must outlive it. `background`: how readings are timed that may take long.
    ThisComputer(KernelReadings& kernel, TemperatureSensors& sensors, const SystemWords& words,
                 Clock clock = steadyTime, ReadingPace background = {});

    /// What its system calls things.
    [[nodiscard]] const SystemWords& words() const { return words_; }

    /// Percent of processor time busy since the previous measurement; the first one measures since boot.
    [[nodiscard]] double cpuPercent();
    /// Utilisation of the first accelerator that reports one; may exceed 100. Absent when none does, and while one
    /// hangs.
    [[nodiscard]] std::optional<double> gpuPercent();
    [[nodiscard]] SpaceUsage ram();
    /// The volume that holds the user's home directory; rounded to one decimal. Waits for as long as a network home
    /// takes to answer.
    [[nodiscard]] SpaceUsage disk();
    /// Measures all four. The future is not finished while one of them hangs, and all who ask meanwhile get the same;
    /// it is cancelled when the system cannot make a thread for it.
    [[nodiscard]] QFuture<ProbedFigures> figures();
    /// What one group of sensors says; no other is read for it. The summary alone: the list of sensors is in info().
    [[nodiscard]] ThermalSummary thermals(SensorGroup group);
    /// Mean temperature of the processor, in °C; absent when no sensor measures it.
    [[nodiscard]] std::optional<double> socTemperature();
    /// As KernelReadings says; asked anew each time.
    [[nodiscard]] bool hasDefaultRoute() { return kernel_.hasDefaultRoute(); }
    /// The full record. What describes the machine is read once; the figures in it are those of the functions above.
    [[nodiscard]] MacHardwareInfo info();

private:
    template <typename Value>
    struct Reading {
        std::mutex mutex;
        Value value{};
        std::optional<std::chrono::nanoseconds> takenAt;
    };
    template <typename Value, typename Take>
    Value current(Reading<Value>& reading, Take take);
    [[nodiscard]] std::optional<QList<TemperatureReading>> temperatures(SensorGroup group);
    [[nodiscard]] MacHardwareInfo description();

    KernelReadings& kernel_;
    TemperatureSensors& sensors_;
    const SystemWords& words_;
    const Clock clock_;
    std::optional<CpuTicks> previousTicks_; ///< guarded by the mutex of `cpu_`
    Reading<double> cpu_;
    const BackgroundReading<std::optional<double>> gpu_;
    Reading<SpaceUsage> ram_;
    Reading<SpaceUsage> disk_;
    std::array<Reading<std::optional<QList<TemperatureReading>>>, 3> temperatures_; ///< by group
    std::once_flag described_;
    MacHardwareInfo description_;
    std::mutex figuresMutex_;
    QFuture<ProbedFigures> figures_;
    // They end before what they use. One for each, so that neither is behind the other when that hangs.
    BackgroundThreads gpuThread_{1};
    BackgroundThreads figuresThread_{1};
};

} // namespace tarnwick
