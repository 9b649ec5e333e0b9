#include "FileTree.h"
#include "linux/IdleResidency.h"
#include "linux/LinuxKernelReadings.h"

#include <QTest>

#include <chrono>
#include <cstring>
#include <utility>

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

const auto amd = u"sys/class/drm/card1/device/gpu_busy_percent"_s;
const auto nvidia = u"sys/bus/pci/drivers/nvidia/0000:0%1:00.0/power/runtime_status"_s;

} // namespace

class LinuxReadingsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void processorTicks() {
        const auto ticksIn = [](const QByteArray& stat) {
            const FileTree tree;
            tree.write(u"proc/stat"_s, stat);
            return LinuxKernelReadings(tree.root()).cpuTicks();
        };
        QCOMPARE(ticksIn("cpu  100 20 30 400 50 6 7 8 90 10\ncpu0 1 2 3 4\n"), (CpuTicks{100, 51, 450, 20}));
        QCOMPARE(ticksIn("cpu 1 2 3 4\n"), (CpuTicks{1, 3, 4, 2}));
        QCOMPARE(ticksIn("cpu  4294967297 4294967296 0 8589934599 0 0 0 0 0 0\n"), (CpuTicks{1, 0, 7, 0}));
        for (const char* damaged : {"cpu  1 2 3", "cpu  1 x 3 4\n", "cpu0 1 2 3 4\n", ""})
            QVERIFY2(!ticksIn(damaged), damaged);
    }

    void processorTimesThatDrop() {
        const FileTree tree;
        tree.write(u"proc/stat"_s, "cpu  1000 0 0 5000 50\n");
        LinuxKernelReadings kernel(tree.root());
        CpuTicks before = kernel.cpuTicks().value_or(CpuTicks{});
        const auto passedAt = [&](const QByteArray& ticks) {
            tree.write(u"proc/stat"_s, "cpu  " + ticks + '\n');
            const CpuTicks now = kernel.cpuTicks().value_or(CpuTicks{});
            const CpuTicks then = std::exchange(before, now);
            return CpuTicks{now.user - then.user, now.system - then.system, now.idle - then.idle, now.nice - then.nice};
        };
        QCOMPARE(passedAt("1010 0 0 5040 0"), (CpuTicks{10, 0, 0, 0})); // the kernel takes a little back …
        QCOMPARE(passedAt("1020 0 0 5060 5"), (CpuTicks{10, 0, 15, 0}));
        QCOMPARE(passedAt("1030 0 0 4965 0"), (CpuTicks{10, 0, 0, 0}));
        QCOMPARE(passedAt("1040 0 0 3000 0"), (CpuTicks{})); // … a processor goes offline …
        QCOMPARE(passedAt("1050 0 0 3020 10"), (CpuTicks{10, 0, 30, 0}));
        QCOMPARE(passedAt("1060 0 0 2928 0"), (CpuTicks{}));
        QCOMPARE(passedAt("1070 0 0 2958 0"), (CpuTicks{10, 0, 30, 0}));
        QCOMPARE(passedAt("7 4 0 2988 0"), (CpuTicks{})); // … and other counters begin again
        QCOMPARE(passedAt("17 5 2 3018 0"), (CpuTicks{10, 2, 30, 1}));
    }

    void memory() {
        using Mebibytes = std::pair<qint64, qint64>; // in all, and in use; -1: unknown
        const auto memoryIn = [](const QByteArray& meminfo, const QString& more = {}) -> Mebibytes {
            const FileTree tree;
            for (const QString& line : more.split(u'|'))
                tree.installLine(line);
            tree.write(u"proc/meminfo"_s, meminfo);
            LinuxKernelReadings kernel(tree.root());
            const auto total = number<qint64>(kernel, "hw.memsize");
            const auto pages = kernel.memoryPages();
            return {total ? *total >> 20 : -1, pages ? static_cast<qint64>(pages->active * pages->pageSize) >> 20 : -1};
        };
        QCOMPARE(memoryIn("MemTotal:  4096000 kB\nMemFree: 1 kB\nMemAvailable:   1024000 kB\n"), Mebibytes(4000, 3000));
        QCOMPARE(memoryIn("MemTotal: 4096000 kB\nMemFree: 1024000 kB\nBuffers: 512000 kB\nCached: 512000 kB\n"),
                 Mebibytes(4000, 2000)); // an early kernel
        QCOMPARE(memoryIn("MemTotal: 1024 kB\nMemAvailable: 4096 kB\n"), Mebibytes(1, 0));
        QCOMPARE(memoryIn("MemAvailable: 4096 kB\n").second, -1);
        QCOMPARE(memoryIn("MemTotal: lots\nMemAvailable: 4096 kB\n").second, -1);
        const QByteArray available = "kB\nMemAvailable: 1048576 kB\n";
        const QString blocks = u"sys/devices/system/memory/block_size_bytes = 8000000|"
                               "sys/devices/system/memory/memory[0-31]/online = 1|"
                               "sys/devices/system/memory/memory[32-40]/online = 0"_s;
        QCOMPARE(memoryIn("MemTotal: 3145728 " + available, blocks), Mebibytes(4096, 3072));
        QCOMPARE(memoryIn("MemTotal: 3145727 " + available, blocks),
                 Mebibytes(3071, 2047)); // a balloon, or a container
        QCOMPARE(memoryIn("MemTotal: 4194305 " + available, blocks).first, 4096);
        const auto zfs = u"proc/spl/kstat/zfs/arcstats = c_min 4 %1\\nsize 4 %2"_s;
        QCOMPARE(memoryIn("MemTotal: 4194304 " + available, zfs.arg(256 << 20).arg(1024 << 20)), Mebibytes(4096, 2304));
        QCOMPARE(memoryIn("MemTotal: 4194304 " + available, zfs.arg(256 << 20).arg(128 << 20)), Mebibytes(4096, 3072));
    }

    void coreCounts() {
        using Cores = std::pair<qint32, qint32>; // large and small ones; -1: unknown
        // Processors as the kernel describes them: "SIBLINGS CAPACITY" for each, CAPACITY only where it has one.
        const auto coresOf = [](const QStringList& processors, const QString& more = {}) {
            const FileTree tree;
            tree.install(more);
            for (qsizetype cpu = 0; cpu < processors.size(); ++cpu) {
                const QString files = QString(processors.at(cpu)).replace(u' ', u"|cpu_capacity "_s);
                tree.install(u"sys/devices/system/cpu/cpu%1|topology/core_cpus_list %2"_s.arg(cpu).arg(files));
            }
            LinuxKernelReadings kernel(tree.root());
            return Cores(number<qint32>(kernel, "hw.perflevel0.physicalcpu").value_or(-1),
                         number<qint32>(kernel, "hw.perflevel1.physicalcpu").value_or(-1));
        };
        QCOMPARE(coresOf(u"0,4;1,5;2,6;3,7;0,4;1,5;2,6;3,7"_s.split(u';')), Cores(4, 0));
        QCOMPARE(coresOf(u"0-1;0-1;2-3;2-3;4;5;6;7"_s.split(u';'),
                         u"sys/devices/cpu_core|cpus 0-3\nsys/devices/cpu_atom|cpus 4-7"_s),
                 Cores(2, 4)); // hybrid Intel
        QCOMPARE(coresOf(u"0 325;1 325;2 325;3 325;4 870;5 870;6 870;7 1024"_s.split(u';')), Cores(4, 4));
        QCOMPARE(coresOf(u"0 250;1 250;2 427;3 427;4 1024;5 1024"_s.split(u';')), Cores(4, 2)); // three classes
        QCOMPARE(coresOf({u"0 1024"_s, u"1 1024"_s}), Cores(2, 0));
        QCOMPARE(coresOf(u"0;1;2"_s.split(u';'), u"sys/devices/cpu_atom|cpus 1\nsys/devices/cpu_lowpower|cpus 2"_s),
                 Cores(1, 2));
        QCOMPARE(coresOf({u"0"_s, u"1"_s}, u"sys/devices/cpu_atom|cpus 1-,x,-3,2-9999999999"_s), Cores(2, 0));
    }

    void names() {
        // Model, name on the lid and chip, of what no machine in fixtures/machines shows.
        const auto namesOf = [](const QString& files) {
            const FileTree tree;
            for (const QString& file : files.split(u'|'))
                tree.installLine(file);
            LinuxKernelReadings kernel(tree.root());
            return QString::fromUtf8(kernel.value("hw.model").value_or("?") + '|') + *kernel.makersModelName() + u'|' +
                   QString::fromUtf8(kernel.value("machdep.cpu.brand_string").value_or("?"));
        };
        QCOMPARE(namesOf(u"proc/sys/kernel/arch = aarch64|proc/cpuinfo = processor\\t: 0\\nmodel name"_s),
                 u"aarch64|aarch64|aarch64"_s);
        const QString virtualMachine = u"proc/device-tree/compatible = linux,dummy-virt\\0|"
                                       "proc/sys/kernel/arch = riscv64|"_s;
        QCOMPARE(namesOf(virtualMachine + u".dockerenv = "_s), u"Docker Container|Docker Container|riscv64"_s);
        QCOMPARE(namesOf(virtualMachine + u"run/.containerenv = |proc/cpuinfo = uarch : thead,c910"_s),
                 u"Podman Container|Podman Container|thead,c910"_s);
        QCOMPARE(namesOf(u"sys/class/dmi/id/sys_vendor = Apple Inc.|sys/class/dmi/id/product_name = Xserve3,1|"
                         "proc/cpuinfo = model name : ARMv7 Processor rev 3 (v7l)\\nHardware : Generic Board|"
                         "proc/device-tree/compatible = odd\\0"_s),
                 u"Xserve3,1|Xserve3,1|Generic Board"_s);
        QCOMPARE(namesOf(u"proc/device-tree/compatible = nvidia,p3767\\0nvidia,tegra234\\0|"
                         "proc/device-tree/model = Board\\0"_s),
                 u"Board|Board|NVIDIA Tegra234"_s);
    }

    void systems() {
        const auto systemIn = [](const QByteArray& release) {
            const FileTree tree;
            tree.write(u"etc/os-release"_s, release);
            const OperatingSystem system = LinuxKernelReadings(tree.root()).operatingSystem();
            return system.name + u'|' + system.version + u'|' + system.versionText;
        };
        QCOMPARE(systemIn("PRETTY_NAME=\"Debian GNU/Linux 12 (bookworm)\"\nNAME=\"Debian GNU/Linux\"\n"
                          "VERSION_ID=\"12\"\nVERSION=\"12 (bookworm)\"\n"),
                 u"Debian GNU/Linux|12|Debian GNU/Linux 12 (bookworm)"_s);
        QCOMPARE(systemIn("NAME=Arch\nPRETTY_NAME='Arch Linux'\n"), u"Arch||Arch Linux"_s);
        QCOMPARE(systemIn("NAME=\"Joe\\\"s \\$ Linux\"\nVERSION_ID=3.1"), u"Joe\"s $ Linux|3.1|Joe\"s $ Linux 3.1"_s);
        QCOMPARE(systemIn({}), u"Linux||Linux"_s);
    }

    void bootTimeFollowsTheKernel() {
        const FileTree tree;
        tree.write(u"proc/stat"_s, "cpu  1 2 3 4\nctxt 5\nbtime 1795378849\nprocesses 8029\n");
        LinuxKernelReadings kernel(tree.root());
        QCOMPARE(kernel.value("kern.boottime")->size(), 16);
        QCOMPARE(number<qint64>(kernel, "kern.boottime"), std::optional(qint64{1795378849}));
        QCOMPARE(number<qint64>(kernel, "kern.boottime", 8), std::optional(qint64{0}));
        tree.write(u"proc/stat"_s, "cpu  1 2 3 4\nbtime 1795378900\n");
        QCOMPARE(number<qint64>(kernel, "kern.boottime"), std::optional(qint64{1795378900}));
    }

    void thermalState() {
        const auto stateAt = [](const QString& celsius) {
            const FileTree tree;
            tree.install(u"sys/class/thermal/thermal_zone0|temp 20000\n" // a zone without trip points
                         "sys/class/thermal/thermal_zone1|temp %1|trip_point_0_type critical|trip_point_0_temp 105000|"
                         "trip_point_1_type passive|trip_point_1_temp 90000|"
                         "trip_point_2_type active|trip_point_2_temp 50000|cdev0_trip_point 1|cdev1_trip_point 2\n"
                         "sys/class/thermal/thermal_zone2|temp 60000|trip_point_0_type passive|"
                         "trip_point_0_temp -274000"_s.arg(celsius + u"000"_s));
            return LinuxKernelReadings(tree.root()).thermalState();
        };
        QCOMPARE(stateAt(u"49"_s), ThermalState::nominal);
        QCOMPARE(stateAt(u"50"_s), ThermalState::fair);
        QCOMPARE(stateAt(u"90"_s), ThermalState::serious);
        QCOMPARE(stateAt(u"105"_s), ThermalState::critical);
        QCOMPARE(stateAt(u"x"_s), ThermalState::unknown);
    }

    void kernelCards() {
        const FileTree tree;
        tree.install(u"sys/class/drm/card0/device|vendor 0x8086\nsys/class/drm/card10/device|gpu_busy_percent 77\n"
                     "sys/class/drm/card1/device|gpu_busy_percent 12|power/runtime_status suspended\n"
                     "sys/class/drm/card1-DP-1|status connected"_s);
        LinuxKernelReadings kernel(tree.root());
        QCOMPARE(utilisations(kernel), u"77 ?"_s);
        tree.write(u"sys/class/drm/card1/device/power/runtime_status"_s, "active\n");
        QCOMPARE(utilisations(kernel), u"77 12"_s); // the busiest first
        tree.write(amd, "busy\n");
        QCOMPARE(utilisations(kernel), u"77 ?"_s);
        tree.remove(u"sys/class/drm/card10/device"_s);
        QCOMPARE(utilisations(kernel), u"? ?"_s);
        tree.install(u"sys/class/drm/card2/device|gpu_busy_percent 33"_s);
        for (int read = 0; read < 60; ++read)
            (void)kernel.accelerators();
        QCOMPARE(utilisations(kernel), u"33 ?"_s);
    }

    void idleCounters() {
        using namespace std::chrono_literals;
        IdleResidency residency;
        const IdleResidency::Clock::time_point start;
        const auto busyAt = [&](std::chrono::milliseconds time, std::chrono::milliseconds idle) {
            return residency.busyPercent(idle, start + time).value_or(-1);
        };
        QCOMPARE(busyAt(0ms, 0ms), -1.0);
        QCOMPARE(busyAt(1000ms, 0ms), -1.0); // switched off
        QCOMPARE(busyAt(2000ms, 700ms), -1.0);
        QCOMPARE(busyAt(3000ms, 1450ms), 25.0);
        QCOMPARE(busyAt(3000ms, 1450ms), -1.0);
        QCOMPARE(busyAt(4000ms, 2451ms), 0.0);
        QCOMPARE(busyAt(5000ms, 2451ms), 100.0);
        QCOMPARE(busyAt(6000ms, 300ms), -1.0); // it began again
        QCOMPARE(busyAt(8000ms, 1300ms), 50.0);
    }

    void intelCards_data() {
        QTest::addColumn<QString>("counter");
        QTest::addColumn<QString>("other");
        QTest::newRow("i915") << u"card1/gt/gt0/rc6_residency_ms"_s << u"card1/power/rc6_residency_ms"_s;
        QTest::newRow("i915, second part") << u"card1/gt/gt1/rc6_residency_ms"_s << u"card1/gt/gt0/rc6_residency_ms"_s;
        QTest::newRow("early i915") << u"card1/power/rc6_residency_ms"_s << u"card1/power/rc6p_residency_ms"_s;
        QTest::newRow("xe") << u"card1/device/tile0/gt0/gtidle/idle_residency_ms"_s << u"card1/gt_cur_freq_mhz"_s;
        QTest::newRow("xe, second part") << u"card1/device/tile1/gt1/gtidle/idle_residency_ms"_s
                                         << u"card1/device/tile0/gt0/gtidle/idle_residency_ms"_s;
    }
    void intelCards() {
        QFETCH(const QString, counter);
        QFETCH(const QString, other);
        const FileTree tree;
        const auto write = [&tree](const QString& file, const char* content) {
            tree.write(u"sys/class/drm/"_s + file, content);
        };
        write(u"card1/device/power/runtime_status"_s, "active\n");
        write(counter, "1000\n");
        write(other, "1\n");
        LinuxKernelReadings kernel(tree.root());
        QCOMPARE(utilisations(kernel), u"?"_s); // no interval yet
        write(other, "2000000\n");              // idle ever since
        QCOMPARE(utilisations(kernel), u"100"_s);
        for (int read = 0; read < 100; ++read)
            QCOMPARE(utilisations(kernel), u"100"_s); // also after a look for new cards
        write(counter, "2000000\n");
        write(other, "4000000\n");
        QCOMPARE(utilisations(kernel), u"0"_s);
        write(u"card1/device/power/runtime_status"_s, "suspended\n");
        QCOMPARE(utilisations(kernel), u"?"_s);
        write(u"card1/device/power/runtime_status"_s, "active\n");
        QCOMPARE(utilisations(kernel), u"?"_s); // the time asleep is no interval
        QCOMPARE(utilisations(kernel), u"100"_s);
    }

    void systemsOnAChip() {
        const FileTree tree;
        tree.install(u"sys/class/devfreq/dmc|load 88@528000000Hz\nsys/class/devfreq/fdab0000.npu|load 99@1000000000Hz\n"
                     "sys/class/devfreq/fb000000.gpu|load 47@200000000Hz|cur_freq 200000000"_s);
        LinuxKernelReadings kernel(tree.root());
        QCOMPARE(utilisations(kernel), u"47"_s);
        tree.write(u"sys/class/devfreq/fb000000.gpu/device/power/runtime_status"_s, "suspended\n");
        LinuxKernelReadings asleep(tree.root());
        QCOMPARE(utilisations(asleep), u"?"_s);
    }

    void idleSecondCardIsLeftAlone_data() {
        QTest::addColumn<QString>("device");
        QTest::addColumn<QString>("next");
        const auto row = [](const char* name, const char* device, const char* next) {
            QTest::newRow(name) << QString::fromLatin1(device) << QString::fromLatin1(next);
        };
        row("graphics card", "class 0x030000|boot_vga 0|power/control auto", "0");
        row("3D controller of a laptop", "class 0x030200|power/control auto", "0");
        row("display controller of a laptop", "class 0x038000|power/control auto", "0");
        row("card that firmware starts on", "class 0x030000|boot_vga 1|power/control auto", "50");
        row("card that may not sleep", "class 0x038000|power/control on", "50");
        row("part of a system on a chip", "power/control auto", "50");
    }
    void idleSecondCardIsLeftAlone() {
        QFETCH(const QString, device);
        const FileTree tree;
        tree.install(u"sys/class/drm/card1/device|gpu_busy_percent 40|power/runtime_status active|"_s + device);
        LinuxKernelReadings kernel(tree.root());
        QCOMPARE(utilisations(kernel), u"40"_s);
        tree.write(amd, "0\n");
        QCOMPARE(utilisations(kernel), u"0"_s);
        tree.write(amd, "50\n");
        QTEST(utilisations(kernel), "next");
    }

    void sleepIsAllowedAndForbiddenMeanwhile() {
        const FileTree tree;
        tree.install(u"sys/class/drm/card1/device|gpu_busy_percent 0|class 0x038000|power/control on"_s);
        LinuxKernelReadings kernel(tree.root());
        QCOMPARE(utilisations(kernel), u"0"_s);
        tree.write(amd, "30\n");
        QCOMPARE(utilisations(kernel), u"30"_s);
        tree.write(u"sys/class/drm/card1/device/power/control"_s, "auto\n");
        tree.write(amd, "0\n");
        QCOMPARE(utilisations(kernel), u"0"_s);
        tree.write(amd, "30\n");
        QCOMPARE(utilisations(kernel), u"0"_s);
    }

    void nvidiaCards() {
        const FileTree tree;
        const QString log = tree.full(u"log"_s);
        qputenv("STANDIN_NVIDIA_LOG", QFile::encodeName(log));
        tree.install(u"sys/bus/pci/drivers/nvidia/0000:01:00.0|power/runtime_status suspended|class 0x030200|"
                     "power/control auto\n"
                     "sys/bus/pci/drivers/nvidia/0000:02:00.0|power/runtime_status suspended|class 0x030200|"
                     "power/control on"_s);
        {
            LinuxKernelReadings kernel(tree.root(), QStringLiteral(STANDIN_NVIDIA));
            QCOMPARE(utilisations(kernel), u"? ?"_s);
            QVERIFY2(!QFile::exists(log), "a card that sleeps was touched");
            tree.write(nvidia.arg(2), "active\n");
            QCOMPARE(utilisations(kernel), u"30 ?"_s);
            tree.write(nvidia.arg(1), "active\n");
            QCOMPARE(utilisations(kernel), u"63 30"_s);
            QCOMPARE(utilisations(kernel), u"30 0"_s);
            QCOMPARE(utilisations(kernel), u"30 0"_s);
            tree.write(nvidia.arg(2), "suspended\n");
            QCOMPARE(utilisations(kernel), u"0 ?"_s); // the session ends, and the idle card may fall asleep
            QCOMPARE(utilisations(kernel), u"0 ?"_s);
            QFile calls(log);
            QVERIFY(calls.open(QIODevice::ReadOnly));
            QCOMPARE(calls.readAll(), "idudududududus");
        }
        LinuxKernelReadings withoutLibrary(tree.root(), u"/nowhere/libnvidia-ml.so.1"_s);
        QCOMPARE(utilisations(withoutLibrary), u"? ?"_s);
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
        QVERIFY(!kernel.cpuTicks() && !kernel.memoryPages());
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
