#include "LinuxKernelReadings.h"

#include "KernelFiles.h"
#include "LinuxMachine.h"
#include "LinuxProcessor.h"
#include "LinuxRoutes.h"
#include "LinuxThermalState.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <array>
#include <ctime>
#include <limits>

#include <sys/statvfs.h>
#include <sys/utsname.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr std::chrono::seconds thermalPeriod{10}; // firmware answers for some of the zones
/// The kernel takes longer to write /proc/meminfo than for all other figures together.
constexpr std::chrono::milliseconds oneQuestion{100};

template <typename Integer>
QByteArray bytesOf(Integer number) {
    return {reinterpret_cast<const char*>(&number), static_cast<qsizetype>(sizeof number)};
}

std::optional<QByteArray> textValue(const QByteArray& text) {
    return text.isEmpty() ? std::nullopt : std::optional(text);
}

using Ticks = SteadyTicks::Counts; // user, system, idle, nice

std::optional<Ticks> readTicks(const KeptFile& stat) {
    std::array<char, 512> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by the read
    QByteArrayView line = restOfLine(stat.read(buffer).text, "cpu ");
    enum Column { user, nice, system, idle, ioWait, interrupts, softInterrupts, stolen, columnCount };
    std::array<quint64, columnCount> ticks{};
    for (std::size_t column = 0; column < columnCount; ++column) {
        const std::optional<quint64> number = takeNumber(line);
        if (!number && column <= idle)
            return std::nullopt;
        ticks.at(column) = number.value_or(0); // early kernels end with idle
    }
    return Ticks{
        ticks[user], // guests included
        ticks[system] + ticks[interrupts] + ticks[softInterrupts] + ticks[stolen],
        ticks[idle] + ticks[ioWait], // waiting for a disk is idle time
        ticks[nice],
    };
}

CpuTicks wrapped(const Ticks& ticks) {
    const auto wrap = [](quint64 count) {
        return static_cast<std::uint32_t>(count);
    };
    const auto [user, system, idle, nice] = ticks;
    return {.user = wrap(user), .system = wrap(system), .idle = wrap(idle), .nice = wrap(nice)};
}

} // namespace

LinuxKernelReadings::LinuxKernelReadings(const QString& root, const QString& nvidiaLibrary, const DeviceAccess& access)
    : root_(root.endsWith(u'/') ? root : root + u'/')
    , stat_(root_ + u"proc/stat"_s)
    , access_(access)
    , memoryReading_(root_)
    , accelerators_(root_, nvidiaLibrary, access)
    , thermalState_([this] { return readLinuxThermalState(root_, access_); }, ThermalState::unknown,
                    {.period = thermalPeriod, .grace = access.grace, .patience = access.patience}) {}

std::optional<QByteArray> LinuxKernelReadings::value(const char* name) {
    const QByteArrayView wanted(name);
    if (wanted == "hw.memsize") {
        const auto memory = this->memory();
        return bytesOf(memory ? static_cast<qint64>(memory->installed * 1024)
                              : qint64{::sysconf(_SC_PHYS_PAGES)} * ::sysconf(_SC_PAGESIZE));
    }
    if (wanted == "kern.boottime")
        return bootTime();
    if (wanted == "kern.osrelease")
        return release();
    if (wanted == "machdep.cpu.brand_string")
        return textValue(LinuxProcessor::name(root_));
    if (wanted == "hw.model")
        return textValue(LinuxMachine::modelIdentifier(root_));
    if (wanted == "hw.perflevel0.physicalcpu")
        return bytesOf(LinuxProcessor::physicalCores(root_).performance);
    if (wanted == "hw.perflevel1.physicalcpu")
        return bytesOf(LinuxProcessor::physicalCores(root_).efficiency);
    return std::nullopt;
}

std::optional<QString> LinuxKernelReadings::makersModelName() {
    return LinuxMachine::makersModelName(root_);
}

std::optional<CpuTicks> LinuxKernelReadings::cpuTicks() {
    const std::lock_guard lock(ticksMutex_);
    const std::optional<Ticks> ticks = readTicks(stat_);
    return ticks ? std::optional(wrapped(steadyTicks_.advance(*ticks))) : std::nullopt;
}

std::optional<MemoryPages> LinuxKernelReadings::memoryPages() {
    const auto memory = this->memory();
    if (!memory)
        return std::nullopt;
    // Linux has no page counts that add up to "in use": all installed memory that programs cannot get is in use.
    const auto pageSize = static_cast<quint64>(::sysconf(_SC_PAGESIZE));
    const quint64 pages = (memory->installed - memory->available) * 1024 / pageSize;
    const quint64 countable = std::min<quint64>(pages, std::numeric_limits<std::uint32_t>::max());
    return MemoryPages{.active = static_cast<std::uint32_t>(countable), .pageSize = pageSize};
}

QList<QVariantMap> LinuxKernelReadings::accelerators() {
    return accelerators_.read();
}

OperatingSystem LinuxKernelReadings::operatingSystem() {
    QByteArray text = readSmallFile(root_ + u"etc/os-release"_s);
    if (text.isEmpty())
        text = readSmallFile(root_ + u"usr/lib/os-release"_s);
    OperatingSystem system{
        .name = assignedValue(text, "NAME="),
        .version = assignedValue(text, "VERSION_ID="),
        .versionText = assignedValue(text, "PRETTY_NAME="),
    };
    if (system.name.isEmpty())
        system.name = u"Linux"_s; // os-release(5) sets this default
    if (system.versionText.isEmpty())
        system.versionText = u"%1 %2"_s.arg(system.name, system.version).trimmed();
    return system;
}

ThermalState LinuxKernelReadings::thermalState() {
    return thermalState_.ask(threads_, access_.clock());
}

std::optional<VolumeSpace> LinuxKernelReadings::homeVolume() {
    // statvfs on the folder, because QStorageInfo looks for a mount point, and there is none to see in a changed root.
    static_assert(sizeof(fsblkcnt_t) == 8, "32-bit systems cannot read the size of a large volume");
    struct statvfs volume {};
    if (::statvfs(QFile::encodeName(QDir::homePath()).constData(), &volume) != 0 || volume.f_blocks == 0)
        return std::nullopt;
    // Free, not available: as `df` counts it, the blocks reserved for root are not used.
    return VolumeSpace{.size = static_cast<qint64>(volume.f_blocks * volume.f_frsize),
                       .free = static_cast<qint64>(volume.f_bfree * volume.f_frsize)};
}

qint64 LinuxKernelReadings::wallClockSeconds() {
    return std::time(nullptr);
}

bool LinuxKernelReadings::hasDefaultRoute() {
    return LinuxRoutes::hasDefault(root_);
}

std::optional<LinuxMemory> LinuxKernelReadings::memory() {
    const std::lock_guard lock(memoryMutex_);
    const std::chrono::nanoseconds now = access_.clock();
    if (!memoryReadAt_ || now - *memoryReadAt_ >= oneQuestion) {
        memory_ = memoryReading_.read();
        memoryReadAt_ = now;
    }
    return memory_;
}

std::optional<QByteArray> LinuxKernelReadings::release() const {
    const QByteArray told = readSmallFile(root_ + u"proc/sys/kernel/osrelease"_s);
    utsname here{};
    return textValue(told.isEmpty() && ::uname(&here) == 0 ? QByteArray(here.release) : told);
}

std::optional<QByteArray> LinuxKernelReadings::bootTime() const {
    // Read each time, because the kernel changes it when the clock is set.
    const auto seconds = numberAfter(readSmallFile(root_ + u"proc/stat"_s), "btime ");
    return seconds ? std::optional(bytesOf(static_cast<qint64>(*seconds)) + bytesOf(qint64{0})) : std::nullopt;
}

std::optional<CpuTicks> kernelCpuTicks() {
    static const KeptFile stat(u"/proc/stat"_s);
    const std::optional<Ticks> ticks = readTicks(stat);
    return ticks ? std::optional(wrapped(*ticks)) : std::nullopt;
}

QString shellSysctl() {
    return uR"sh(sysctl() {
    command sysctl "$@" 2>/dev/null || awk '{ print "{ " $1 " " $2 " " $3 " }" }' /proc/loadavg
}
)sh"_s;
}

} // namespace tarnwick
