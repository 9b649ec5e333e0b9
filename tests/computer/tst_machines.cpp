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
    std::atomic<int> seconds = 0; ///< go by with each question
    const std::function<std::chrono::nanoseconds()> clock = [this] {
        return std::chrono::seconds(++seconds);
    };
    LinuxKernelReadings kernel;
    LinuxTemperatureSensors sensors;
    ThisComputer computer{kernel, sensors, linuxWords, clock};

    explicit Machine(const FileTree& tree)
        : kernel(tree.root()), sensors(tree.root(), {.clock = clock, .patience = std::chrono::minutes(1)}) {}
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
            const MacHardwareInfo info = machine->computer.info();
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
            };
            return answers.value(question, u"no such question"_s);
        };
        QCOMPARE(tree.play(lines, answer), lines);
    }
};

QTEST_GUILESS_MAIN(MachinesTest)
#include "tst_machines.moc"
