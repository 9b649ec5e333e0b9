#include "LinuxProcessor.h"

#include "KernelFiles.h"

#include <QDir>
#include <QHash>
#include <QSet>

#include <algorithm>
#include <array>
#include <utility>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace tarnwick::LinuxProcessor {

namespace {

using Word = std::pair<QByteArrayView, QByteArrayView>;

/// Makers of systems on a chip by their prefix in the device tree.
constexpr std::array makers{
    Word{"allwinner", "Allwinner"}, Word{"amlogic", "Amlogic"}, Word{"brcm", "Broadcom"}, Word{"fsl", "NXP"},
    Word{"mediatek", "MediaTek"},   Word{"nvidia", "NVIDIA"},   Word{"qcom", "Qualcomm"}, Word{"rockchip", "Rockchip"},
    Word{"samsung", "Samsung"},     Word{"sifive", "SiFive"},   Word{"sophgo", "Sophgo"}, Word{"spacemit", "SpacemiT"},
    Word{"starfive", "StarFive"},   Word{"thead", "T-Head"},    Word{"ti", "TI"},
};

/// Apple's chips by their names in the device tree.
constexpr std::array appleChips{
    Word{"t8103", "M1"},       Word{"t6000", "M1 Pro"}, Word{"t6001", "M1 Max"}, Word{"t6002", "M1 Ultra"},
    Word{"t8112", "M2"},       Word{"t6020", "M2 Pro"}, Word{"t6021", "M2 Max"}, Word{"t6022", "M2 Ultra"},
    Word{"t8122", "M3"},       Word{"t6030", "M3 Pro"}, Word{"t6031", "M3 Max"}, Word{"t6034", "M3 Max"},
    Word{"t6032", "M3 Ultra"}, Word{"t8132", "M4"},     Word{"t6040", "M4 Pro"}, Word{"t6041", "M4 Max"},
};

/// Cores of Arm servers, which have no other name, by implementer and part.
constexpr std::array armCores{
    Word{"0x41 0xd0c", "Arm Neoverse N1"}, Word{"0x41 0xd40", "Arm Neoverse V1"}, Word{"0x41 0xd49", "Arm Neoverse N2"},
    Word{"0x41 0xd4f", "Arm Neoverse V2"}, Word{"0xc0 0xac3", "Ampere-1"},        Word{"0xc0 0xac4", "Ampere-1a"},
};

template <typename Table>
QByteArrayView lookUp(const Table& table, QByteArrayView key) {
    const auto found = std::find_if(table.begin(), table.end(), [&](const Word& word) { return word.first == key; });
    return found == table.end() ? QByteArrayView() : found->second;
}

/// "bcm2711" as its maker writes it: "BCM2711", but "Tegra234".
QByteArray chipName(const QByteArray& chip) {
    const auto firstDigit = std::find_if(chip.begin(), chip.end(), [](char c) { return c >= '0' && c <= '9'; });
    return firstDigit - chip.begin() > 3 ? chip.first(1).toUpper() + chip.sliced(1) : chip.toUpper();
}

/// The chip of a device tree: its last compatible entry, "MAKER,CHIP".
QByteArray deviceTreeChip(const QString& root) {
    QByteArrayList compatible = deviceTreeTexts(root, u"compatible"_s);
    compatible.removeAll("apple,arm-platform");
    const QByteArrayList parts = compatible.isEmpty() ? QByteArrayList() : compatible.last().split(',');
    if (parts.size() != 2 || parts.first() == "linux") // "linux,dummy-virt" is a virtual machine
        return {};
    if (const QByteArrayView apple = lookUp(appleChips, parts.last()); parts.first() == "apple" && !apple.isEmpty())
        return "Apple " + apple.toByteArray();
    return QByteArray(lookUp(makers, parts.first()).toByteArray() + ' ' + chipName(parts.last())).trimmed();
}

QByteArray valueIn(const QByteArray& description, QByteArrayView key) {
    const QByteArrayView line = restOfLine(description, key);
    return line.sliced(line.indexOf(':') + 1).trimmed().toByteArray();
}

/// "0-3,8" as numbers; what is no number is left out.
QSet<int> cpuList(const QByteArray& text) {
    constexpr int mostCpus = 1 << 16;
    QSet<int> cpus;
    for (const QByteArray& range : text.split(',')) {
        const QByteArrayList ends = range.trimmed().split('-');
        bool firstIsNumber = false;
        bool lastIsNumber = false;
        const int first = ends.first().toInt(&firstIsNumber);
        const int last = ends.last().toInt(&lastIsNumber);
        for (int cpu = first; firstIsNumber && lastIsNumber && cpu <= std::min(last, mostCpus); ++cpu)
            cpus.insert(cpu);
    }
    return cpus;
}

struct Core {
    qint64 capacity = 0; ///< of the largest one's 1024; 0 when the kernel does not compare
    bool hasThirdCache = false;
};

/// Each physical core by one of its processors.
QHash<int, Core> findCores(const QString& root) {
    const QString folder = root + u"sys/devices/system/cpu/"_s;
    QSet<QByteArray> siblingsSeen;
    QHash<int, Core> cores;
    for (const QString& entry : QDir(folder).entryList({u"cpu[0-9]*"_s}, QDir::Dirs)) {
        QByteArray siblings = readSmallFile(folder + entry + u"/topology/core_cpus_list"_s);
        if (siblings.isEmpty()) // a kernel before 5.3
            siblings = readSmallFile(folder + entry + u"/topology/thread_siblings_list"_s);
        bool isNumber = false;
        const int cpu = entry.mid(3).toInt(&isNumber);
        if (isNumber && !siblings.isEmpty() && !siblingsSeen.contains(siblings)) {
            siblingsSeen.insert(siblings);
            cores.insert(cpu, {.capacity = readSmallFile(folder + entry + u"/cpu_capacity"_s).toLongLong(),
                               .hasThirdCache = QFile::exists(folder + entry + u"/cache/index3"_s)});
        }
    }
    return cores;
}

} // namespace

Cores physicalCores(const QString& root) {
    const QHash<int, Core> cores = findCores(root);
    if (cores.isEmpty())
        return {.performance = static_cast<std::int32_t>(::sysconf(_SC_NPROCESSORS_CONF))};
    // x86 names its small cores, but not always those of the island without a third cache. Elsewhere the small ones are
    // those of the lowest class, if it is clearly below the highest.
    const QSet<int> atoms = cpuList(readSmallFile(root + u"sys/devices/cpu_atom/cpus"_s)) |
                            cpuList(readSmallFile(root + u"sys/devices/cpu_lowpower/cpus"_s));
    const auto hasThirdCache = [](const Core& core) {
        return core.hasThirdCache;
    };
    const bool cachesDiffer = std::any_of(cores.begin(), cores.end(), hasThirdCache);
    const auto [smallest, largest] = std::minmax_element(
        cores.begin(), cores.end(), [](const Core& a, const Core& b) { return a.capacity < b.capacity; });
    Cores count;
    for (auto core = cores.begin(); core != cores.end(); ++core) {
        const qint64 capacity = core.value().capacity;
        const bool isSmall = atoms.isEmpty()
                                 ? 3 * capacity < 2 * largest->capacity && 2 * capacity <= 3 * smallest->capacity
                                 : atoms.contains(core.key()) || (cachesDiffer && !core.value().hasThirdCache);
        ++(isSmall ? count.efficiency : count.performance);
    }
    return count;
}

QByteArray name(const QString& root) {
    const QByteArray description = readSmallFile(root + u"proc/cpuinfo"_s);
    // Architectures name it in their own words.
    for (const QByteArrayView key : {"model name", "Model Name", "cpu model", "cpu\t"}) {
        QByteArray name = valueIn(description, key);
        if (!name.isEmpty() && !name.startsWith("ARMv")) // 32-bit Arm names the instruction set there
            return name;
    }
    if (QByteArray chip = deviceTreeChip(root); !chip.isEmpty())
        return chip;
    const QByteArray part = valueIn(description, "CPU implementer") + ' ' + valueIn(description, "CPU part");
    if (const QByteArrayView core = lookUp(armCores, part); !core.isEmpty())
        return core.toByteArray();
    for (const QByteArrayView key : {"Hardware", "uarch"})
        if (QByteArray name = valueIn(description, key); !name.isEmpty())
            return name;
    return architecture(root);
}

} // namespace tarnwick::LinuxProcessor
