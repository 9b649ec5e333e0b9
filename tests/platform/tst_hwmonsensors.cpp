#include "FileTree.h"
#include "linux/HwmonNames.h"
#include "linux/LinuxTemperatureSensors.h"

#include <QSemaphore>
#include <QTest>

#include <atomic>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace std::chrono_literals;

namespace {

constexpr const char* raspberryPi = R"(
hwmon0|name cpu_thermal|temp1_input 48686
hwmon1|name rpi_volt|in0_lcrit_alarm 0
)";

constexpr const char* brokenValues = R"(
hwmon0|name k10temp|temp1_input abc|temp1_label Tctl|temp2_input 99999999999999999999|temp2_label Tccd1
hwmon0|temp3_input -61000|temp3_label Tccd2|tempx_input 40000
hwmon1|temp1_input 42500
hwmon2|temp1_input 43500|temp1_label VRM
)";

void install(const FileTree& tree, const QByteArray& capture) {
    tree.install(QString::fromLatin1(capture).replace(u"hwmon"_s, u"sys/class/hwmon/hwmon"_s));
}

/// A machine's sensors with a clock that the test moves.
struct Rig {
    FileTree tree;
    std::chrono::nanoseconds now = 1h;
    /// Called for each input that is read.
    std::function<void(QByteArrayView)> onRead = [](QByteArrayView) {
    };
    LinuxTemperatureSensors sensors;

    explicit Rig(const QByteArray& capture, std::chrono::milliseconds patience = 1min)
        : sensors(tree.root(), {.clock = [this] { return now; },
                                .readInput =
                                    [this](const KeptFile& input, std::span<char> buffer) {
                                        const KeptFile::Content content = input.read(buffer);
                                        onRead(content.text);
                                        return content;
                                    },
                                .patience = patience}) {
        install(tree, capture);
    }

    /// "NAME=CELSIUS", with "?" for a name or a reading that is absent; of all groups, others first, drives last.
    QString told() {
        QStringList lines;
        for (const SensorGroup group : {SensorGroup::others, SensorGroup::processor, SensorGroup::drives}) {
            for (const TemperatureReading& reading : sensors.read(group).value_or(QList<TemperatureReading>())) {
                lines.append(reading.product.value_or(u"?"_s) + u'=' +
                             (reading.celsius ? QString::number(*reading.celsius) : u"?"_s));
            }
        }
        return lines.join(u'|');
    }
    QString toldAfter(std::chrono::seconds time) { return now += time, told(); }
};

} // namespace

class HwmonSensorsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void roles() {
        const auto name = [](const char* driver, const char* label = "") {
            return hwmonSensorName({.driver = QString::fromLatin1(driver),
                                    .label = QString::fromLatin1(label),
                                    .number = 1,
                                    .isOnly = true});
        };
        for (const char* die : {"cpu_thermal", "CPU_therm", "GPU_therm", "tj_thermal", "imx_thermal_zone",
                                "cluster0_thermal", "soc_thermal", "SoC-thermal", "cpu0_0_top_thermal",
                                "gpuss1_thermal", "bigcore2_thermal", "ap_cpu1_thermal", "sfctemp", "amdgpu"})
            QCOMPARE(name(die), u"tdie "_s + QString::fromLatin1(die));
        for (const char* none :
             {"acpitz", "pch_cannonlake", "ddr_thermal", "PMIC_Die", "nct6775", "iwlwifi_1", "socket"})
            QCOMPARE(name(none), QString::fromLatin1(none));
        QCOMPARE(name("macsmc_hwmon", "NAND Flash Temperature"), u"SSD macsmc_hwmon NAND Flash Temperature"_s);
        QCOMPARE(name("macsmc_hwmon", "CPU Core 1"), u"tdie macsmc_hwmon CPU Core 1"_s);
        QCOMPARE(name("macsmc_hwmon", "Battery Hotspot"), u"macsmc_hwmon Battery Hotspot"_s);
        QCOMPARE(name("asusec", "VRM"), u"tdev asusec VRM"_s);
    }

    void brokenFiles() {
        Rig rig(brokenValues);
        QCOMPARE(rig.told(), u"?=42.5|tdie k10temp Tctl=?|tdie k10temp Tccd1=?|tdie k10temp Tccd2=-61|tdev VRM=43.5"_s);
    }

    void sameDriverTwice() {
        Rig rig("hwmon0|name nvme|temp1_input 30000\nhwmon1|name nvme|temp1_input 31000");
        rig.tree.write(u"sys/devices/nvme0/model"_s, "one");
        rig.tree.link(u"sys/class/hwmon/hwmon0/device"_s, rig.tree.full(u"sys/devices/nvme0"_s));
        QCOMPARE(rig.told(), u"SSD nvme (nvme0)=30|SSD nvme (hwmon1)=31"_s);
    }

    void noSensorsAtAll() {
        const FileTree tree;
        LinuxTemperatureSensors sensors(tree.root());
        QCOMPARE(sensors.read(SensorGroup::processor).has_value(), false);
        QDir().mkpath(tree.full(u"sys/class/hwmon"_s));
        LinuxTemperatureSensors container(tree.root() + u'/');
        const auto readings = container.read(SensorGroup::processor);
        QVERIFY(readings && readings->isEmpty());
    }

    void eachKindHasItsPeriod() {
        Rig rig("hwmon0|name coretemp|temp1_input 40000\nhwmon1|name nvme|temp1_input 41000\n"
                "hwmon2|name nct6775|temp1_input 42000\nhwmon3|name acpitz|temp1_input 43000\n"
                "hwmon4|name drivetemp|temp1_input 44000");
        QTRY_COMPARE(rig.told(), u"nct6775=42|acpitz=43|tdie coretemp=40|SSD drivetemp=44|SSD nvme=41"_s);
        for (int device = 0; device < 5; ++device)
            rig.tree.write(u"sys/class/hwmon/hwmon%1/temp1_input"_s.arg(device), "50000");
        QCOMPARE(rig.told(), u"nct6775=42|acpitz=43|tdie coretemp=50|SSD drivetemp=44|SSD nvme=41"_s);
        QCOMPARE(rig.toldAfter(9s), u"nct6775=42|acpitz=43|tdie coretemp=50|SSD drivetemp=44|SSD nvme=41"_s);
        (void)rig.toldAfter(1s);
        QTRY_COMPARE(rig.told(), u"nct6775=50|acpitz=50|tdie coretemp=50|SSD drivetemp=44|SSD nvme=41"_s);
        QCOMPARE(rig.toldAfter(19s), u"nct6775=50|acpitz=50|tdie coretemp=50|SSD drivetemp=44|SSD nvme=41"_s);
        QCOMPARE(rig.toldAfter(1s), u"nct6775=50|acpitz=50|tdie coretemp=50|SSD drivetemp=50|SSD nvme=50"_s);
    }

    void onlyTheGroupAskedForIsRead() {
        Rig rig("hwmon0|name coretemp|temp1_input 40000\nhwmon1|name nvme|temp1_input 41000\n"
                "hwmon2|name nct6775|temp1_input 42000");
        std::atomic<int> reads = 0;
        rig.onRead = [&](QByteArrayView text) {
            reads += text == "41000" ? 1 : 100;
        };
        QCOMPARE(rig.sensors.read(SensorGroup::drives)->size(), 1);
        QCOMPARE(reads.load(), 1);
    }

    void nobodyWaitsForASlowSensor() {
        Rig rig("hwmon0|name coretemp|temp1_input 40000\nhwmon1|name amdgpu|temp1_input 41000", 5ms);
        QSemaphore mayAnswer;
        rig.onRead = [&](QByteArrayView text) {
            if (text == "41000")
                mayAnswer.acquire();
        };
        QTRY_COMPARE(rig.told(), u"tdie coretemp=40|tdie amdgpu=?"_s); // busy machines may need a second look
        rig.tree.write(u"sys/class/hwmon/hwmon0/temp1_input"_s, "42000\n");
        QTRY_COMPARE(rig.told(), u"tdie coretemp=42|tdie amdgpu=?"_s);
        mayAnswer.release(1000);
        QTRY_COMPARE(rig.told(), u"tdie coretemp=42|tdie amdgpu=41"_s);
    }

    void aDiskThatTurnsIsAskedWhileItWorks() {
        Rig rig("hwmon0|name drivetemp|temp1_input 31000|device/block/sda/queue/rotational 1|"
                "device/block/sda/stat 10 0 80 5 20 0 160 9 0 12 14");
        const auto work = [&](const char* counts) {
            rig.tree.write(u"sys/class/hwmon/hwmon0/device/block/sda/stat"_s, counts);
        };
        QCOMPARE(rig.told(), u"drivetemp=?"_s);
        QCOMPARE(rig.toldAfter(30s), u"drivetemp=?"_s);
        work("11 0 88 5 20 0 160 9 0 12 14");
        QCOMPARE(rig.toldAfter(30s), u"drivetemp=31"_s);
        rig.tree.write(u"sys/class/hwmon/hwmon0/temp1_input"_s, "35000\n");
        QCOMPARE(rig.toldAfter(30s), u"drivetemp=31"_s);
        QCOMPARE(rig.toldAfter(10min), u"drivetemp=?"_s);
        work("11 0 88 5 21 0 168 9 0 12 14");
        QCOMPARE(rig.toldAfter(30s), u"drivetemp=35"_s);
    }

    void sensorWithoutAnAnswerStays() {
        Rig rig("hwmon0|name iwlwifi_1\nhwmon1|name coretemp|temp1_input 30000");
        rig.tree.link(u"sys/class/hwmon/hwmon0/temp1_input"_s, u"/proc/self/mem"_s); // fails with EIO
        for (int read = 0; read < 30; ++read)
            QCOMPARE(rig.toldAfter(10s), u"iwlwifi_1=?|tdie coretemp=30"_s);
    }

    void vanishedDeviceGoes() {
        Rig rig("hwmon0|name nvme|temp1_input 40850\nhwmon1|name iwlwifi_1|temp1_input 31000");
        QCOMPARE(rig.told(), u"iwlwifi_1=31|SSD nvme=40.85"_s);
        rig.tree.remove(u"sys/class/hwmon/hwmon1"_s);
        QCOMPARE(rig.toldAfter(10s), u"SSD nvme=40.85"_s);
    }

    void replacedDeviceIsFoundAtOnce() {
        Rig rig(raspberryPi);
        QCOMPARE(rig.toldAfter(0s), u"tdie cpu_thermal=48.686"_s);
        (void)rig.toldAfter(11s);
        rig.tree.remove(u"sys/class/hwmon/hwmon0"_s);
        install(rig.tree, raspberryPi); // under the same number, as a driver that is loaded again
        QCOMPARE(rig.toldAfter(1s), u"tdie cpu_thermal=?"_s);
        QCOMPARE(rig.toldAfter(1s), u"tdie cpu_thermal=48.686"_s);
    }

    void newSensorsAppear() {
        Rig rig(raspberryPi);
        QCOMPARE(rig.told(), u"tdie cpu_thermal=48.686"_s);
        install(rig.tree, "hwmon0|temp1_input 51000\nhwmon1|temp2_input 35000\nhwmon2|name nvme|temp1_input 33000");
        QCOMPARE(rig.toldAfter(10s), u"rpi_volt=35|tdie cpu_thermal=51|SSD nvme=33"_s);
        install(rig.tree, "hwmon2|temp2_input 34000"); // in a folder that is known
        QCOMPARE(rig.toldAfter(10s), u"rpi_volt=35|tdie cpu_thermal=51|SSD nvme temp1=33|SSD nvme temp2=34"_s);
    }

    void sleepingDeviceIsNotAsked() {
        Rig rig("hwmon0|name amdgpu|temp1_input 44000|device/power/runtime_status suspended");
        QCOMPARE(rig.told(), u"tdie amdgpu=?"_s);
        rig.tree.write(u"sys/class/hwmon/hwmon0/device/power/runtime_status"_s, "active\n");
        QCOMPARE(rig.told(), u"tdie amdgpu=44"_s);
    }

    void idleSecondCardIsLeftAlone() {
        Rig rig("hwmon0|name amdgpu|temp1_input 44000|device/power/runtime_status active|device/power/control auto|"
                "device/class 0x030000|device/boot_vga 0");
        QCOMPARE(rig.told(), u"tdie amdgpu=44"_s);
        rig.tree.write(u"sys/class/hwmon/hwmon0/temp1_input"_s, "48000\n");
        QCOMPARE(rig.told(), u"tdie amdgpu=44"_s);
        rig.tree.write(u"sys/class/hwmon/hwmon0/device/power/runtime_status"_s, "suspended\n");
        QCOMPARE(rig.told(), u"tdie amdgpu=?"_s);
    }
};

QTEST_GUILESS_MAIN(HwmonSensorsTest)
#include "tst_hwmonsensors.moc"
