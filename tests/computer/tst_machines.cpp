#include "../platform/FileTree.h"
#include "ThisComputer.h"
#include "linux/LinuxKernelReadings.h"
#include "linux/LinuxTemperatureSensors.h"
#include "linux/LinuxWords.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

/// What is read in a tree, once its files are there.
struct Machine {
    std::atomic<std::chrono::seconds> now{};
    const DeviceAccess access{
        .clock = [this] { return now.load(); },
        .patience = std::chrono::minutes(1),
        .grace = {},
    };
    LinuxKernelReadings kernel;
    LinuxTemperatureSensors sensors;
    ThisComputer computer{kernel, sensors, linuxWords, access.clock};

    explicit Machine(const FileTree& tree) : kernel(tree.root(), {}, access), sensors(tree.root(), access) {}
};

} // namespace

class MachinesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void machine_data() {
        QTest::addColumn<QStringList>("lines");
        const QDir folder(QStringLiteral(TARNWICK_FIXTURES "/machines"));
        const QStringList fixtures = folder.entryList({u"*.tree"_s});
        QVERIFY(!fixtures.isEmpty());
        for (const QString& fixture : fixtures)
            QTest::newRow(qPrintable(fixture))
                << QString::fromUtf8(readFile(folder.filePath(fixture))).trimmed().split(u'\n');
    }
    /// What the owner of each machine sees.
    void machine() {
        QFETCH(const QStringList, lines);
        const FileTree tree;
        std::optional<Machine> machine;
        const auto answer = [&](const QString& question) {
            if (!machine)
                machine.emplace(tree);
            machine->now = machine->now.load() + std::chrono::minutes(1);
            const MacHardwareInfo info = machine->computer.info();
            const std::optional<double> gpu = machine->computer.gpuPercent();
            QStringList readings;
            for (const MacThermalSensor& sensor : info.sensors)
                readings += u"%1=%2"_s.arg(sensor.name).arg(sensor.tempCelsius);
            const QString memory = info.memoryString.section(u' ', 0, 1);
            const QHash<QString, QString> answers{
                {u"lid"_s, info.modelName},
                {u"model"_s, info.modelIdentifier},
                {u"chip"_s, info.chip},
                {u"cores"_s, info.cpuCores},
                {u"memory"_s, u"%1, %2 % used"_s.arg(memory).arg(qRound(info.ramUsagePercent))},
                {u"thermal state"_s, info.thermalState},
                {u"SoC, peak, SSD"_s,
                 u"%1 %2 %3"_s.arg(info.avgSocTemp).arg(info.peakSocTemp).arg(info.ssdTemp.value_or(0))},
                {u"sensors"_s, readings.join(u'|')},
                {u"GPU"_s, gpu ? u"%1 %"_s.arg(*gpu) : u"none"_s},
            };
            return answers.value(question, u"no such question"_s);
        };
        QCOMPARE(tree.play(lines, answer), lines);
    }

    void aCardRestsFromAllWhoReadIt() {
        const FileTree tree;
        tree.install(u"sys/devices/0000:03:00.0/class = 0x038000"_s);
        tree.install(u"sys/devices/0000:03:00.0/power/control = auto"_s);
        tree.install(u"sys/class/drm/card1/device -> ../../../devices/0000:03:00.0"_s);
        tree.install(u"sys/class/hwmon/hwmon0/device -> ../../../devices/0000:03:00.0"_s);
        tree.install(u"sys/class/hwmon/hwmon0/name = amdgpu"_s);
        auto readAt = [&, machine = std::optional<Machine>()](int second, int busy, int celsius) mutable {
            tree.install(u"sys/devices/0000:03:00.0/gpu_busy_percent = %1"_s.arg(busy));
            tree.install(u"sys/class/hwmon/hwmon0/temp1_input = %1"_s.arg(celsius * 1000));
            if (!machine)
                machine.emplace(tree);
            machine->now = std::chrono::seconds(second);
            const auto percent = MacHardwareCollector::queryGpuUsage(machine->kernel.accelerators());
            const auto readings = machine->sensors.read(SensorGroup::processor);
            return u"%1 % %2"_s.arg(percent.value_or(-1)).arg(readings->first().celsius.value_or(-1));
        };
        QCOMPARE(readAt(0, 0, 40), u"0 % 40"_s);
        for (int read = 0; read < 100; ++read)
            QCOMPARE(readAt(14, 60, 41), u"0 % 40"_s); // also after a look for new cards
        QCOMPARE(readAt(15, 60, 41), u"60 % 41"_s);
        QCOMPARE(readAt(16, 70, 42), u"70 % 42"_s); // awake anyway
        QCOMPARE(readAt(17, 0, 43), u"0 % 42"_s);
        QCOMPARE(readAt(31, 50, 44), u"0 % 42"_s);
    }
};

QTEST_GUILESS_MAIN(MachinesTest)
#include "tst_machines.moc"
