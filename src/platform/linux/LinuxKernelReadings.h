#pragma once

#include "BackgroundReading.h"
#include "DeviceAccess.h"
#include "KeptFile.h"
#include "KernelReadings.h"
#include "LinuxAccelerators.h"
#include "LinuxMemory.h"
#include "SteadyTicks.h"

#include <chrono>
#include <mutex>
#include <optional>

namespace tarnwick {

/// The readings that Linux gives in /proc, /sys and /etc/os-release.
class LinuxKernelReadings final : public KernelReadings {
public:
    /// `root` is the folder that holds proc, sys and etc.
    explicit LinuxKernelReadings(const QString& root = QStringLiteral("/"),
                                 const QString& nvidiaLibrary = NvidiaLibrary::installedName(),
                                 const DeviceAccess& access = {});

    [[nodiscard]] std::optional<QByteArray> value(const char* name) override;
    [[nodiscard]] std::optional<QString> makersModelName() override;
    [[nodiscard]] std::optional<CpuTicks> cpuTicks() override;
    [[nodiscard]] std::optional<MemoryPages> memoryPages() override;
    [[nodiscard]] QList<QVariantMap> accelerators() override;
    [[nodiscard]] OperatingSystem operatingSystem() override;
    /// Read every 10 s, on a thread of its own; unknown until a slow firmware has answered for the first time.
    [[nodiscard]] ThermalState thermalState() override;
    [[nodiscard]] std::optional<VolumeSpace> homeVolume() override;
    [[nodiscard]] qint64 wallClockSeconds() override;
    [[nodiscard]] bool hasDefaultRoute() override;

private:
    /// As it is now: who asks for the total and for what is used gets both from one reading.
    [[nodiscard]] std::optional<LinuxMemory> memory();
    [[nodiscard]] std::optional<QByteArray> release() const;
    [[nodiscard]] std::optional<QByteArray> bootTime() const;

    const QString root_; ///< ends in "/"
    const KeptFile stat_;
    const DeviceAccess access_;
    const LinuxMemoryReading memoryReading_;
    std::mutex memoryMutex_; ///< guards the next two
    std::optional<LinuxMemory> memory_;
    std::optional<std::chrono::nanoseconds> memoryReadAt_;
    std::mutex ticksMutex_;
    SteadyTicks steadyTicks_;
    LinuxAccelerators accelerators_;
    const BackgroundReading<ThermalState> thermalState_;
    BackgroundThreads threads_{1};
};

} // namespace tarnwick
