#include "FileTree.h"
#include "linux/HwmonNames.h"
#include "linux/LinuxTemperatureSensors.h"

#include <QElapsedTimer>
#include <QScopeGuard>
#include <QSemaphore>
#include <QTest>

#include <atomic>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace std::chrono_literals;

namespace {

/// A machine's sensors, as of these drivers with 40 °C, 41 °C and so on. The clock is a file in the tree.
struct Rig {
    FileTree tree;
    /// Called for each input that is read. The last one that was is in the file "asked".
    std::function<void(QByteArrayView)> onRead = [this](QByteArrayView text) {
        tree.write(u"asked"_s, text.toByteArray());
    };
    LinuxTemperatureSensors sensors;

    explicit Rig(const QStringList& drivers = {}, std::chrono::milliseconds patience = 1min,
                 std::chrono::milliseconds grace = 0ms)
        : sensors(
              tree.root() + u'/',
              {.clock =
                   [this] { return std::chrono::seconds(3600 + readFile(tree.full(u"clock"_s)).trimmed().toInt()); },
               .readInput =
                   [this](const KeptFile& input, std::span<char> buffer) {
                       const KeptFile::Content content = input.read(buffer);
                       onRead(content.text);
                       return content;
                   },
               .patience = patience,
               .grace = grace}) {
        for (qsizetype i = 0; i < drivers.size(); ++i) {
            tree.install(u"sys/class/hwmon/hwmon%1/name = %2"_s.arg(i).arg(drivers.at(i)));
            tree.install(u"sys/class/hwmon/hwmon%1/temp1_input = %2"_s.arg(i).arg(40'000 + i * 1000));
        }
    }

    /// "NAME=CELSIUS", with "?" for a name or a reading that is absent; of all groups, others first, drives last.
    QString told() {
        QStringList lines;
        for (const SensorGroup group : {SensorGroup::others, SensorGroup::processor, SensorGroup::drives}) {
            const auto readings = sensors.read(group);
            if (!readings)
                return u"no sensor service"_s;
            for (const TemperatureReading& reading : *readings)
                lines.append(reading.product.value_or(u"?"_s) + u'=' +
                             (reading.celsius ? QString::number(*reading.celsius) : u"?"_s));
        }
        return lines.join(u'|');
    }
};

/// The name of a device's only input. `text` is the driver, a space and the input's label.
QString nameOf(const QString& text) {
    return hwmonSensorName(
        {.driver = text.section(u' ', 0, 0), .label = text.section(u' ', 1), .number = 1, .isOnly = true});
}

} // namespace

class HwmonSensorsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void sensors_data() { addCases(u"linux/sensors.txt"_s); }
    void sensors() {
        QFETCH(const QStringList, lines);
        Rig rig;
        const auto answer = [&rig](const QString& question) {
            return question.startsWith(u"name of ") ? nameOf(question.section(u' ', 2)) : rig.told();
        };
        QCOMPARE(rig.tree.play(lines, answer), lines);
    }

    void onlyTheGroupAskedForIsRead() {
        Rig rig({u"coretemp"_s, u"nvme"_s, u"nct6775"_s});
        std::atomic<int> reads = 0;
        rig.onRead = [&](QByteArrayView text) {
            reads += text == "41000" ? 1 : 100;
        };
        QCOMPARE(rig.sensors.read(SensorGroup::drives)->size(), 1);
        QCOMPARE(reads.load(), 1);
    }

    void nobodyWaitsForASlowSensor() {
        QSemaphore mayAnswer;
        Rig rig({u"amdgpu"_s, u"coretemp"_s}, 5ms);
        rig.onRead = [&](QByteArrayView text) {
            if (text == "40000")
                mayAnswer.acquire();
        };
        const auto inTheEnd = qScopeGuard([&mayAnswer] { mayAnswer.release(1000); });
        QTRY_COMPARE(rig.told(), u"tdie amdgpu=?|tdie coretemp=41"_s); // what is behind it needs a second look
        rig.tree.write(u"sys/class/hwmon/hwmon1/temp1_input"_s, "42000\n");
        QTRY_COMPARE(rig.told(), u"tdie amdgpu=?|tdie coretemp=42"_s);
        mayAnswer.release();
        QTRY_COMPARE(rig.told(), u"tdie amdgpu=40|tdie coretemp=42"_s);
        rig.tree.write(u"clock"_s, "1\n");
        QCOMPARE(rig.told(), u"tdie amdgpu=40|tdie coretemp=42"_s);
        rig.tree.write(u"clock"_s, "32\n");
        QTRY_COMPARE(rig.told(), u"tdie amdgpu=?|tdie coretemp=42"_s); // nobody knows any more
    }

    void whatTakesLongerThanOnesPatienceIsSlow() {
        const auto take = [clock = QElapsedTimer()]() mutable {
            for (clock.start(); clock.elapsed() < 3;) {
            }
            return true;
        };
        const BackgroundReading<bool> reading(take, false, {.patience = 1ms});
        (*reading.workDue(0s))();
        QVERIFY(reading.isSlow());
    }

    void whoAsksEverySecondNeverWaits() {
        QSemaphore mayAnswer;
        Rig rig({u"coretemp"_s, u"acpitz"_s}, 10s, 2s);
        rig.onRead = [&](QByteArrayView text) {
            if (text != "40000")
                mayAnswer.acquire();
        };
        const auto inTheEnd = qScopeGuard([&mayAnswer] { mayAnswer.release(1000); });
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(rig.told(), u"acpitz=?|tdie coretemp=40"_s); // firmware is known to be slow
        rig.tree.write(u"sys/class/hwmon/hwmon0/temp1_input"_s, "42000\n");
        rig.tree.write(u"clock"_s, "1\n");
        QCOMPARE(rig.told(), u"acpitz=?|tdie coretemp=40"_s);
        QVERIFY2(clock.elapsed() < 9'000, "it waited");
        mayAnswer.release(1000); // the processor is read each time that one asks
        QTRY_COMPARE(rig.told(), u"acpitz=41|tdie coretemp=42"_s);
    }
};

QTEST_GUILESS_MAIN(HwmonSensorsTest)
#include "tst_hwmonsensors.moc"
