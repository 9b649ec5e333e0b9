#include "LinuxMemory.h"

#include "KernelFiles.h"

#include <QDir>

#include <algorithm>
#include <array>
#include <limits>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr quint64 mostKiB = std::numeric_limits<qint64>::max() / 1024; // what can be counted in bytes

quint64 onlineMemoryKiB(const QString& root) {
    const QString folder = root + u"sys/devices/system/memory/"_s;
    const quint64 blockSize = readSmallFile(folder + u"block_size_bytes"_s).toULongLong(nullptr, 16);
    const QStringList blocks = QDir(folder).entryList({u"memory[0-9]*"_s}, QDir::Dirs);
    const auto online = std::count_if(blocks.begin(), blocks.end(), [&](const QString& block) {
        return readSmallFile(folder + block + u"/online"_s) == "1";
    });
    return static_cast<quint64>(online) * (blockSize / 1024);
}

/// What ZFS keeps in memory and gives back when programs want it. The kernel does not count it as available.
quint64 reclaimableZfsKiB(const QString& root) {
    const QByteArray statistics = readSmallFile(root + u"proc/spl/kstat/zfs/arcstats"_s);
    const auto bytes = [&](QByteArrayView name) { // "NAME TYPE VALUE"
        return restOfLine(statistics, name).toByteArray().split(' ').last().toULongLong();
    };
    const quint64 size = bytes("size ");
    return (size - std::min(size, bytes("c_min "))) / 1024;
}

} // namespace

LinuxMemoryReading::LinuxMemoryReading(const QString& root)
    : root_(root), memory_(root + u"proc/meminfo"_s), onlineKiB_(onlineMemoryKiB(root)) {}

std::optional<LinuxMemory> LinuxMemoryReading::read() const {
    std::array<char, 512> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by the read
    const QByteArrayView text = memory_.read(buffer).text;
    const auto total = numberAfter(text, "MemTotal:");
    auto available = numberAfter(text, "MemAvailable:");
    if (!available) { // a kernel before 3.14
        const auto free = numberAfter(text, "MemFree:");
        if (!free)
            return std::nullopt;
        available = *free + numberAfter(text, "Buffers:").value_or(0) + numberAfter(text, "Cached:").value_or(0);
    }
    if (!total)
        return std::nullopt;
    // The kernel leaves what it keeps for itself out of the total. A total that is far below the installed memory is
    // another matter: a container has less, or the host of a virtual machine has taken some back.
    const bool isInstalled = *total <= onlineKiB_ && *total >= onlineKiB_ / 4 * 3;
    const quint64 installed = isInstalled ? onlineKiB_ : *total;
    if (installed > mostKiB)
        return std::nullopt;
    return LinuxMemory{.installed = installed, .available = std::min(*available + reclaimableZfsKiB(root_), installed)};
}

} // namespace tarnwick
