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
    ThisComputer computer{
        kernel, sensors, linuxWords, access.clock, {.grace = access.grace, .patience = access.patience}};

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
            const int clock = readFile(tree.full(u"clock"_s)).trimmed().toInt();
            machine->now = clock > 0 ? std::chrono::seconds(clock) : machine->now.load() + std::chrono::minutes(1);
            for (int read = 0; question == u"GPU, after a look for new cards" && read < 60; ++read)
                (void)machine->kernel.accelerators();
            const MacHardwareInfo info = machine->computer.info();
            const std::optional<double> gpu = machine->computer.gpuPercent();
            const QString load = gpu ? u"%1 %"_s.arg(*gpu) : u"none"_s;
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
                {u"GPU"_s, load},
                {u"GPU, after a look for new cards"_s, load},
            };
            return answers.value(question, u"no such question"_s);
        };
        QCOMPARE(tree.play(lines, answer), lines);
    }
};

QTEST_GUILESS_MAIN(MachinesTest)
#include "tst_machines.moc"
