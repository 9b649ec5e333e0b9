#pragma once

#include "KernelReadings.h"

#include <mach/mach.h>

namespace tarnwick {

/// macOS's own readings, taken anew at each question. Any thread.
class MacKernelReadings : public KernelReadings {
public:
    MacKernelReadings();
    ~MacKernelReadings() override;
    Q_DISABLE_COPY_MOVE(MacKernelReadings)

    /// A number of fewer bytes is widened, and one of more is absent.
    [[nodiscard]] std::optional<QByteArray> value(const char* name) override;
    [[nodiscard]] std::optional<CpuTicks> cpuTicks() override;
    [[nodiscard]] std::optional<MemoryPages> memoryPages() override;
    /// The registry's "IOAccelerator" entries up to the first that reports its utilisation, with that figure alone.
    [[nodiscard]] QList<QVariantMap> accelerators() override;
    [[nodiscard]] OperatingSystem operatingSystem() override;
    [[nodiscard]] ThermalState thermalState() override;
    [[nodiscard]] std::optional<VolumeSpace> homeVolume() override;
    [[nodiscard]] qint64 wallClockSeconds() override;

private:
    /// Each request for the port counts as one more use of it, so it is asked for once.
    const host_t host_;
};

} // namespace tarnwick
