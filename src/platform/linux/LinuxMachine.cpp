#include "LinuxMachine.h"

#include "KernelFiles.h"

#include <QDir>
#include <QHash>
#include <QSet>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace tarnwick::LinuxMachine {

namespace {

/// What firmware contains where its maker filled nothing in; in lower case.
constexpr std::array placeholders{
    "to be filled by o.e.m.",
    "system product name",
    "system version",
    "default string",
    "not applicable",
    "not specified",
    "product name",
    "o.e.m.",
    "unknown",
    "none",
    "n/a",
    "invalid",
    "empty",
    "x.x",
};

/// An entry of the firmware's table; empty when its maker filled nothing in.
QByteArray firmwareText(const QString& root, const QString& entry) {
    QByteArray text = readSmallFile(root + u"sys/class/dmi/id/"_s + entry);
    const QByteArray lowercased = text.toLower();
    const bool isPlaceholder = std::any_of(placeholders.begin(), placeholders.end(),
                                           [&](const char* placeholder) { return lowercased == placeholder; });
    return isPlaceholder ? QByteArray() : text;
}

/// A device-tree property: texts that each end in a NUL.
QByteArrayList deviceTreeTexts(const QString& root, const QString& property) {
    QByteArrayList texts = readSmallFile(root + u"proc/device-tree/"_s + property).split('\0');
    texts.removeAll(QByteArray());
    return texts;
}

QByteArray architecture(const QString& root) {
    return readSmallFile(root + u"proc/sys/kernel/arch"_s);
}

/// "0-3,8" as numbers; parts that are not numbers are left out.
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

/// Each physical core as one of its processors, with the processor's share of the largest one's capacity.
QHash<int, qint64> capacityByCore(const QString& root) {
    const QString folder = root + u"sys/devices/system/cpu/"_s;
    QSet<QByteArray> siblingsSeen;
    QHash<int, qint64> cores;
    for (const QString& entry : QDir(folder).entryList({u"cpu[0-9]*"_s}, QDir::Dirs)) {
        QByteArray siblings = readSmallFile(folder + entry + u"/topology/core_cpus_list"_s);
        if (siblings.isEmpty()) // a kernel before 5.3
            siblings = readSmallFile(folder + entry + u"/topology/thread_siblings_list"_s);
        bool isNumber = false;
        const int cpu = entry.mid(3).toInt(&isNumber);
        if (isNumber && !siblings.isEmpty() && !siblingsSeen.contains(siblings)) {
            siblingsSeen.insert(siblings);
            cores.insert(cpu, readSmallFile(folder + entry + u"/cpu_capacity"_s).toLongLong());
        }
    }
    return cores;
}

} // namespace

std::optional<Cores> physicalCores(const QString& root) {
    const QHash<int, qint64> cores = capacityByCore(root);
    if (cores.isEmpty())
        return std::nullopt;
    // On x86 the kernel lists the small cores; elsewhere they are those with clearly less capacity than the largest.
    const QSet<int> atoms = cpuList(readSmallFile(root + u"sys/devices/cpu_atom/cpus"_s));
    const qint64 largest = *std::max_element(cores.begin(), cores.end());
    Cores count;
    for (auto core = cores.begin(); core != cores.end(); ++core) {
        const bool isSmall = atoms.isEmpty() ? 3 * core.value() < 2 * largest : atoms.contains(core.key());
        ++(isSmall ? count.efficiency : count.performance);
    }
    return count;
}

QByteArray processorName(const QString& root) {
    const QByteArray description = readSmallFile(root + u"proc/cpuinfo"_s);
    // The key differs by architecture.
    for (const QByteArrayView key : {"model name", "cpu model", "Hardware", "cpu\t", "uarch"}) {
        const QByteArrayView line = restOfLine(description, key);
        const QByteArrayView name = line.sliced(line.indexOf(':') + 1).trimmed();
        if (!name.isEmpty())
            return name.toByteArray();
    }
    const QByteArrayList compatible = deviceTreeTexts(root, u"compatible"_s);
    if (!compatible.isEmpty()) // most general last: "brcm,bcm2711"
        return compatible.last().mid(compatible.last().indexOf(',') + 1).toUpper();
    return architecture(root);
}

QByteArray modelIdentifier(const QString& root) {
    for (const QString& entry : {u"product_name"_s, u"board_name"_s}) {
        QByteArray text = firmwareText(root, entry);
        if (!text.isEmpty())
            return text;
    }
    const QByteArrayList model = deviceTreeTexts(root, u"model"_s);
    return model.isEmpty() ? architecture(root) : model.first();
}

std::optional<QString> makersModelName(const QString& root) {
    const QByteArray maker = firmwareText(root, u"sys_vendor"_s).toUpper();
    if (maker.startsWith("APPLE"))
        return std::nullopt;
    QByteArray name = maker.startsWith("LENOVO") ? firmwareText(root, u"product_version"_s) : QByteArray();
    if (name.isEmpty())
        name = modelIdentifier(root);
    return name.isEmpty() ? std::nullopt : std::optional(QString::fromUtf8(name));
}

} // namespace tarnwick::LinuxMachine
