#include "MacKernelReadings.h"

#include "FoundationReadings.h"
#include "MacAccelerators.h"

#include <QDir>
#include <QStorageInfo>

#include <algorithm>
#include <array>
#include <cstddef>
#include <ctime>

#include <sys/sysctl.h>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

struct Number {
    QByteArrayView name;
    std::size_t bytes;
};
/// The kernel values that are no texts.
constexpr std::array numbers{
    Number{"hw.perflevel0.physicalcpu", 4},
    Number{"hw.perflevel1.physicalcpu", 4},
    Number{"hw.memsize", 8},
    Number{"kern.boottime", 16},
};

std::optional<QByteArray> numberOf(const char* name, std::size_t bytes) {
    QByteArray value(static_cast<qsizetype>(bytes), '\0');
    return ::sysctlbyname(name, value.data(), &bytes, nullptr, 0) == 0 ? std::optional(value) : std::nullopt;
}

std::optional<QByteArray> textOf(const char* name) {
    std::size_t size = 0;
    if (::sysctlbyname(name, nullptr, &size, nullptr, 0) != 0 || size < 1)
        return std::nullopt;
    // The value may have another length by now: what did not fit is lost, and what was not written is zero.
    QByteArray value(static_cast<qsizetype>(size), '\0');
    (void)::sysctlbyname(name, value.data(), &size, nullptr, 0);
    return value;
}

constexpr std::array thermalStates{ThermalState::nominal, ThermalState::fair, ThermalState::serious,
                                   ThermalState::critical};

std::optional<CpuTicks> ticksOf(host_t host) {
    host_cpu_load_info_data_t load{};
    mach_msg_type_number_t count = HOST_CPU_LOAD_INFO_COUNT;
    if (::host_statistics(host, HOST_CPU_LOAD_INFO, reinterpret_cast<host_info_t>(&load), &count) != KERN_SUCCESS)
        return std::nullopt;
    return CpuTicks{.user = load.cpu_ticks[CPU_STATE_USER],
                    .system = load.cpu_ticks[CPU_STATE_SYSTEM],
                    .idle = load.cpu_ticks[CPU_STATE_IDLE],
                    .nice = load.cpu_ticks[CPU_STATE_NICE]};
}

} // namespace

MacKernelReadings::MacKernelReadings() : host_(::mach_host_self()) {}

MacKernelReadings::~MacKernelReadings() {
    ::mach_port_deallocate(mach_task_self(), host_);
}

std::optional<QByteArray> MacKernelReadings::value(const char* name) {
    const auto* number = std::ranges::find(numbers, QByteArrayView(name), &Number::name);
    return number == numbers.end() ? textOf(name) : numberOf(name, number->bytes);
}

std::optional<CpuTicks> MacKernelReadings::cpuTicks() {
    return ticksOf(host_);
}

std::optional<MemoryPages> MacKernelReadings::memoryPages() {
    vm_statistics64_data_t memory{};
    mach_msg_type_number_t count = HOST_VM_INFO64_COUNT;
    if (::host_statistics64(host_, HOST_VM_INFO64, reinterpret_cast<host_info64_t>(&memory), &count) != KERN_SUCCESS)
        return std::nullopt;
    return MemoryPages{.active = memory.active_count,
                       .wired = memory.wire_count,
                       .compressed = memory.compressor_page_count,
                       .pageSize = vm_kernel_page_size};
}

QList<QVariantMap> MacKernelReadings::accelerators() {
    return readMacAccelerators();
}

OperatingSystem MacKernelReadings::operatingSystem() {
    const ProcessInformation process = FoundationReadings::processInformation();
    return {.name = u"macOS"_s,
            .version = u"%1.%2"_s.arg(process.majorVersion).arg(process.minorVersion),
            .versionText = process.versionText};
}

ThermalState MacKernelReadings::thermalState() {
    const qint64 state = FoundationReadings::processInformation().thermalState;
    const bool isKnown = state >= 0 && state < static_cast<qint64>(thermalStates.size());
    return isKnown ? thermalStates.at(static_cast<std::size_t>(state)) : ThermalState::unknown;
}

std::optional<VolumeSpace> MacKernelReadings::homeVolume() {
    const QStorageInfo volume(QDir::homePath());
    if (!volume.isValid())
        return std::nullopt;
    return VolumeSpace{.size = volume.bytesTotal(), .free = volume.bytesFree()};
}

qint64 MacKernelReadings::wallClockSeconds() {
    return std::time(nullptr);
}

std::optional<CpuTicks> kernelCpuTicks() {
    static const host_t host = ::mach_host_self(); // each request for the port counts as one more use of it
    return ticksOf(host);
}

QString shellSysctl() {
    return {}; // the system's own knows vm.loadavg
}

} // namespace tarnwick
