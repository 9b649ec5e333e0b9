#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QVariantMap>

#include <cstdint>
#include <optional>

namespace tarnwick {

/// Host-wide processor time since boot, in ticks, summed over all cores. The counters wrap.
struct CpuTicks {
    std::uint32_t user = 0;
    std::uint32_t system = 0;
    std::uint32_t idle = 0;
    std::uint32_t nice = 0;
    friend bool operator==(const CpuTicks&, const CpuTicks&) = default;
};

/// Page counts of the virtual-memory system: what counts as used memory.
struct MemoryPages {
    std::uint32_t active = 0;
    std::uint32_t wired = 0;
    std::uint32_t compressed = 0;
    std::uint64_t pageSize = 0; ///< bytes
};

struct VolumeSpace {
    std::optional<qint64> size; ///< bytes
    std::optional<qint64> free; ///< bytes
};

struct OperatingSystem {
    QString name;        ///< "macOS", or the Linux distribution's own name
    QString version;     ///< "14.5", "22.04", "12"; empty for a system that publishes none, as rolling releases do
    QString versionText; ///< the system's own human-readable version text
};

enum class ThermalState { nominal, fair, serious, critical, unknown };

/// What the kernel and the hardware registry know about this computer. A reading changes nothing, and is absent when it
/// cannot be taken. Any thread. accelerators() and homeVolume() may take long, or hang, where a driver or a network
/// volume does.
class KernelReadings {
public:
    virtual ~KernelReadings() = default;

    /// A named kernel value as raw bytes, as `sysctlbyname` gives them: text as UTF-8 (a trailing NUL or not), integers
    /// in this machine's byte order and the width of the named value: "machdep.cpu.brand_string", "hw.model",
    /// "hw.perflevel0.physicalcpu" and "hw.perflevel1.physicalcpu" (4 bytes), "hw.memsize" (8 bytes),
    /// "kern.osrelease", "kern.boottime" (two 8-byte integers: seconds, microseconds).
    [[nodiscard]] virtual std::optional<QByteArray> value(const char* name) = 0;
    /// The name that the maker gave the computer; absent where the system does not know it, and it has to be derived
    /// from the model identifier.
    [[nodiscard]] virtual std::optional<QString> makersModelName() { return std::nullopt; }
    [[nodiscard]] virtual std::optional<CpuTicks> cpuTicks() = 0;
    [[nodiscard]] virtual std::optional<MemoryPages> memoryPages() = 0;
    /// One property dictionary per accelerator, in registry order; the busiest first where the system has none. Never
    /// wakes one that sleeps. The utilisation of one that reports it is the number "Device Utilization %" in the
    /// dictionary "PerformanceStatistics".
    [[nodiscard]] virtual QList<QVariantMap> accelerators() = 0;
    [[nodiscard]] virtual OperatingSystem operatingSystem() = 0;
    [[nodiscard]] virtual ThermalState thermalState() = 0;
    /// The volume that holds the user's home directory.
    [[nodiscard]] virtual std::optional<VolumeSpace> homeVolume() = 0;
    /// Whole seconds since 1970.
    [[nodiscard]] virtual qint64 wallClockSeconds() = 0;
    /// Whether the routing table leads anywhere beyond the networks that this computer is on: a default route of any
    /// kind, a VPN's and a point-to-point one, too. True where that cannot be read.
    [[nodiscard]] virtual bool hasDefaultRoute() { return true; }
};

/// The counters of KernelReadings::cpuTicks() as the kernel has them: idle ones may run back a little. Absent when they
/// cannot be read. Any thread.
[[nodiscard]] std::optional<CpuTicks> kernelCpuTicks();

/// Shell text to put before a script that asks `sysctl -n vm.loadavg` for the load averages. Where the system's own
/// `sysctl` does not know that name, it defines a function `sysctl` that answers "{ 0.42 0.40 0.38 }"; else it is
/// empty.
[[nodiscard]] QString shellSysctl();

} // namespace tarnwick
