#pragma once

#include "KeptFile.h"
#include "KernelReadings.h"
#include "LinuxAccelerators.h"
#include "LinuxMemory.h"
#include "SteadyTicks.h"

#include <mutex>

namespace tarnwick {

/// The readings that Linux gives in /proc, /sys and /etc/os-release.
class LinuxKernelReadings final : public KernelReadings {
public:
    /// `root` is the folder that holds proc, sys and etc.
    explicit LinuxKernelReadings(const QString& root = QStringLiteral("/"),
                                 const QString& nvidiaLibrary = NvidiaLibrary::installedName());

    [[nodiscard]] std::optional<QByteArray> value(const char* name) override;
    [[nodiscard]] std::optional<QString> makersModelName() override;
    [[nodiscard]] std::optional<CpuTicks> cpuTicks() override;
    [[nodiscard]] std::optional<MemoryPages> memoryPages() override;
    [[nodiscard]] QList<QVariantMap> accelerators() override;
    [[nodiscard]] OperatingSystem operatingSystem() override;
    [[nodiscard]] ThermalState thermalState() override;
    [[nodiscard]] std::optional<VolumeSpace> homeVolume() override;
    [[nodiscard]] qint64 wallClockSeconds() override;

private:
    [[nodiscard]] std::optional<QByteArray> release() const;
    [[nodiscard]] std::optional<QByteArray> bootTime() const;

    const QString root_; ///< ends in "/"
    const KeptFile stat_;
    const LinuxMemoryReading memory_;
    std::mutex ticksMutex_;
    SteadyTicks steadyTicks_;
    LinuxAccelerators accelerators_;
};

} // namespace tarnwick
