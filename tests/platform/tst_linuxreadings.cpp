#include "FileTree.h"
#include "linux/LinuxKernelReadings.h"

#include <QScopeGuard>
#include <QSemaphore>
#include <QTest>

#include <chrono>
#include <cstring>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

template <typename Integer>
std::optional<Integer> number(KernelReadings& kernel, const char* name, qsizetype at = 0) {
    const std::optional<QByteArray> bytes = kernel.value(name);
    if (!bytes || bytes->size() < at + static_cast<qsizetype>(sizeof(Integer)))
        return std::nullopt;
    Integer value = 0;
    std::memcpy(&value, bytes->constData() + at, sizeof value);
    return value;
}

/// Utilisation of each card, "?" for one that reports none.
QString utilisations(KernelReadings& kernel) {
    QStringList texts;
    for (const QVariantMap& card : kernel.accelerators()) {
        const QVariantMap statistics = card.value(u"PerformanceStatistics"_s).toMap();
        texts.append(statistics.value(u"Device Utilization %"_s, u"?"_s).toString());
    }
    return texts.join(u' ');
}

template <typename... Numbers>
QString text(Numbers... numbers) {
    return QStringList{QString::number(numbers)...}.join(u' ');
}

/// The answer to a question of fixtures/linux/readings.txt; "?" when it is unknown.
QString answerOf(LinuxKernelReadings& kernel, const QString& question) {
    if (question == u"ticks") {
        const auto ticks = kernel.cpuTicks();
        return ticks ? text(ticks->user, ticks->system, ticks->idle, ticks->nice) : u"?"_s;
    }
    if (question == u"memory") {
        const auto total = number<qint64>(kernel, "hw.memsize");
        const auto pages = kernel.memoryPages();
        return total && pages ? text(*total >> 20, (pages->active * pages->pageSize) >> 20) : u"?"_s;
    }
    if (question == u"cores")
        return text(number<qint32>(kernel, "hw.perflevel0.physicalcpu").value_or(-1),
                    number<qint32>(kernel, "hw.perflevel1.physicalcpu").value_or(-1));
    if (question == u"names")
        return QStringList{QString::fromUtf8(kernel.value("hw.model").value_or("?")),
                           kernel.makersModelName().value_or(u"?"_s),
                           QString::fromUtf8(kernel.value("machdep.cpu.brand_string").value_or("?"))}
            .join(u'|');
    if (question == u"system") {
        const OperatingSystem system = kernel.operatingSystem();
        return QStringList{system.name, system.version, system.versionText}.join(u'|');
    }
    if (question == u"boot time")
        return u"%1 s %2 us"_s.arg(number<qint64>(kernel, "kern.boottime").value_or(-1))
            .arg(number<qint64>(kernel, "kern.boottime", 8).value_or(-1));
    if (question == u"way out")
        return kernel.hasDefaultRoute() ? u"yes"_s : u"no"_s;
    if (question == u"thermal state") {
        const QStringList names{u"nominal"_s, u"fair"_s, u"serious"_s, u"critical"_s, u"unknown"_s};
        return names.at(static_cast<qsizetype>(kernel.thermalState()));
    }
    return question.startsWith(u"busy") ? utilisations(kernel) : u"no such question"_s;
}

} // namespace

class LinuxReadingsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readings_data() { addCases(u"linux/readings.txt"_s); }
    void readings() {
        QFETCH(const QStringList, lines);
        const FileTree tree;
        const QString log = tree.full(u"log"_s);
        qputenv("STANDIN_NVIDIA_LOG", QFile::encodeName(log));
        std::optional<LinuxKernelReadings> kernel;
        std::chrono::seconds now{};
        const auto answer = [&](const QString& question) {
            if (question == u"calls of the library")
                return QString::fromLatin1(readFile(log));
            if (question == u"busy without the library") {
                LinuxKernelReadings without(tree.root(), u"/nowhere/libnvidia-ml.so.1"_s);
                return utilisations(without);
            }
            if (!kernel)
                kernel.emplace(
                    tree.root(), QStringLiteral(STANDIN_NVIDIA),
                    DeviceAccess{.clock = [&now] { return now; }, .patience = std::chrono::minutes(1), .grace = {}});
            for (int read = 0; question == u"busy, after a look for new cards" && read < 60; ++read)
                (void)kernel->accelerators();
            now += std::chrono::seconds(10);
            return answerOf(*kernel, question);
        };
        QCOMPARE(tree.play(lines, answer), lines);
    }

    void nobodyWaitsForASlowThermalZone() {
        const FileTree tree;
        tree.install(u"sys/class/thermal/thermal_zone0/temp = 60000"_s);
        tree.install(u"sys/class/thermal/thermal_zone0/trip_point_0_type = critical"_s);
        tree.install(u"sys/class/thermal/thermal_zone0/trip_point_0_temp = 50000"_s);
        QSemaphore mayAnswer;
        LinuxKernelReadings kernel(tree.root(), {},
                                   {.readInput =
                                        [&mayAnswer](const KeptFile& input, std::span<char> buffer) {
                                            mayAnswer.acquire();
                                            return input.read(buffer);
                                        }});
        const auto inTheEnd = qScopeGuard([&mayAnswer] { mayAnswer.release(1000); });
        QCOMPARE(kernel.thermalState(), ThermalState::unknown);
        mayAnswer.release();
        QTRY_COMPARE(kernel.thermalState(), ThermalState::critical);
    }

    void aDeviceThatIsPluggedInAgainIsAnother() {
        const FileTree tree;
        DevicePowers powers;
        tree.install(u"card/power/runtime_status = active"_s);
        const std::shared_ptr<DevicePower> power = powers.of(tree.full(u"card/"_s));
        QCOMPARE(powers.of(tree.full(u"card/"_s)), power);
        tree.install(u"remove card/power"_s);
        tree.install(u"card/power/runtime_status = suspended"_s);
        QVERIFY(powers.of(tree.full(u"card/"_s))->isAsleep());
    }

    void emptyRootTellsWhatIsCertain() {
        const FileTree tree;
        LinuxKernelReadings kernel(tree.root());
        QCOMPARE(kernel.value("hw.model"), QSysInfo::currentCpuArchitecture().toUtf8());
        QCOMPARE(kernel.value("machdep.cpu.brand_string"), QSysInfo::currentCpuArchitecture().toUtf8());
        QCOMPARE(kernel.value("kern.osrelease"), QSysInfo::kernelVersion().toUtf8());
        QVERIFY(number<qint32>(kernel, "hw.perflevel0.physicalcpu") > 0);
        QCOMPARE(number<qint32>(kernel, "hw.perflevel1.physicalcpu"), std::optional(0));
        QVERIFY(number<qint64>(kernel, "hw.memsize") > 0);
        for (const char* name : {"kern.boottime", "no.such.value"})
            QVERIFY2(!kernel.value(name), name);
        for (const QString& question : {u"ticks"_s, u"memory"_s})
            QCOMPARE(answerOf(kernel, question), u"?"_s);
        QCOMPARE(kernel.thermalState(), ThermalState::unknown);
        QCOMPARE(kernel.accelerators().size(), 0);
    }

    void thisComputer() {
        LinuxKernelReadings kernel;
        const std::optional<CpuTicks> before = kernel.cpuTicks();
        QVERIFY(before);
        QTRY_VERIFY(kernel.cpuTicks() != before);
        QVERIFY(number<qint64>(kernel, "hw.memsize").value_or(0) > 0);
        QVERIFY(number<qint32>(kernel, "hw.perflevel0.physicalcpu").value_or(0) > 0);
        QVERIFY(number<qint64>(kernel, "kern.boottime").value_or(0) <= kernel.wallClockSeconds());
        const std::optional<VolumeSpace> home = kernel.homeVolume();
        QVERIFY(home && home->size.value_or(0) >= home->free.value_or(-1) && home->free.value_or(-1) >= 0);
    }
};

QTEST_GUILESS_MAIN(LinuxReadingsTest)
#include "tst_linuxreadings.moc"
