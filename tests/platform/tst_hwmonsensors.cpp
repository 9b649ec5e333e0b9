#include "FileTree.h"
#include "linux/LinuxTemperatureSensors.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

/// One machine: its chips under /sys/class/hwmon.
using Capture = const char*;

constexpr Capture intelLaptop = R"(
hwmon0|name acpitz|temp1_input 27800
hwmon1|name nvme|temp1_input 37850|temp1_label Composite|temp2_input 51850|temp2_label Sensor 1
hwmon2|name BAT0|in0_input 12870
hwmon4|name iwlwifi_1|temp1_input 41000
hwmon10|name thinkpad|fan1_input 2650|temp1_input 46000|temp1_label CPU|temp3_input 0
hwmon9|name coretemp|temp1_input 47000|temp1_label Package id 0|temp2_input 45000|temp2_label Core 0
hwmon9|temp10_input 46000|temp10_label Core 12
)";

constexpr Capture ryzenDesktop = R"(
hwmon0|name nvme|temp1_input 40850|temp1_label Composite
hwmon1|name drivetemp|temp1_input 31000
hwmon2|name k10temp|temp1_input 66250|temp1_label Tctl|temp2_input 46250|temp2_label Tdie
hwmon3|name amdgpu|temp1_input 44000|temp1_label edge|temp3_input 52000|temp3_label mem
hwmon4|name asusec|temp1_input 49000|temp1_label VRM
hwmon5|name nct6798|temp1_input 35000|temp1_label SYSTIN
)";

constexpr Capture raspberryPi = R"(
hwmon0|name cpu_thermal|temp1_input 48686
hwmon1|name rpi_volt|in0_lcrit_alarm 0
)";

constexpr Capture brokenValues = R"(
hwmon0|name k10temp|temp1_input abc|temp1_label Tctl|temp2_input 99999999999999999999|temp2_label Tccd1
hwmon0|temp3_input -61000|temp3_label Tccd2|tempx_input 40000
hwmon1|temp1_input 42500
hwmon2|temp1_input 43500|temp1_label VRM
)";

void install(const FileTree& tree, const QByteArray& capture) {
    tree.install(QString::fromLatin1(capture).replace(u"hwmon"_s, u"sys/class/hwmon/hwmon"_s));
}

void readOften(LinuxTemperatureSensors& sensors) {
    for (int read = 0; read < 15; ++read)
        (void)sensors.read();
}

/// "NAME=CELSIUS", with "?" for a name or a reading that is absent.
QStringList readingsOf(LinuxTemperatureSensors& sensors) {
    QStringList lines;
    for (const TemperatureReading& reading : sensors.read().value_or(QList<TemperatureReading>())) {
        lines.append(reading.product.value_or(u"?"_s) + u'=' +
                     (reading.celsius ? QString::number(*reading.celsius) : u"?"_s));
    }
    return lines;
}

} // namespace

class HwmonSensorsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void machines_data() {
        QTest::addColumn<QByteArray>("capture");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char* name, Capture capture, const QString& expected) {
            QTest::newRow(name) << QByteArray(capture) << expected;
        };
        row("Intel laptop", intelLaptop,
            u"acpitz=27.8|iwlwifi_1=41|tdie coretemp Package id 0=47|tdie coretemp Core 0=45|tdie coretemp Core 12=46|"
            "thinkpad CPU=46|thinkpad temp3=0|SSD nvme Sensor 1=51.85|SSD nvme Composite=37.85"_s);
        row("Ryzen desktop", ryzenDesktop,
            u"SSD drivetemp=31|k10temp Tctl=66.25|tdie k10temp Tdie=46.25|tdie amdgpu edge=44|amdgpu mem=52|"
            "tdev asusec VRM=49|nct6798 SYSTIN=35|SSD nvme Composite=40.85"_s);
        row("Raspberry Pi", raspberryPi, u"tdie cpu_thermal=48.686"_s);
        row("broken values", brokenValues,
            u"tdie k10temp Tctl=?|tdie k10temp Tccd1=?|tdie k10temp Tccd2=-61|?=42.5|tdev VRM=43.5"_s);
    }
    void machines() {
        QFETCH(const QByteArray, capture);
        const FileTree tree;
        install(tree, capture);
        LinuxTemperatureSensors sensors(tree.root());
        QTEST(readingsOf(sensors).join(u'|'), "expected");
    }

    void sameDriverTwice() {
        const FileTree tree;
        install(tree, "hwmon0|name nvme|temp1_input 30000\nhwmon1|name nvme|temp1_input 31000");
        tree.write(u"sys/devices/nvme0/model"_s, "one");
        tree.link(u"sys/class/hwmon/hwmon0/device"_s, tree.full(u"sys/devices/nvme0"_s));
        LinuxTemperatureSensors sensors(tree.root());
        QCOMPARE(readingsOf(sensors), (QStringList{u"SSD nvme (nvme0)=30"_s, u"SSD nvme (hwmon1)=31"_s}));
    }

    void noSensorsAtAll() {
        const FileTree tree;
        LinuxTemperatureSensors sensors(tree.root());
        QCOMPARE(sensors.read().has_value(), false);
        QDir().mkpath(tree.full(u"sys/class/hwmon"_s));
        LinuxTemperatureSensors container(tree.root() + u'/');
        QCOMPARE(container.read().has_value(), true);
        QCOMPARE(container.read()->size(), 0);
    }

    void sensorWithoutAnAnswerStays() {
        const FileTree tree;
        install(tree, "hwmon0|name iwlwifi_1\nhwmon1|name acpitz|temp1_input 30000");
        tree.link(u"sys/class/hwmon/hwmon0/temp1_input"_s,
                  u"/proc/self/mem"_s); // a read at its beginning fails with EIO
        LinuxTemperatureSensors sensors(tree.root());
        for (int read = 0; read < 30; ++read)
            QCOMPARE(readingsOf(sensors), (QStringList{u"iwlwifi_1=?"_s, u"acpitz=30"_s}));
    }

    void vanishedDeviceGoes() {
        const FileTree tree;
        install(tree, ryzenDesktop);
        LinuxTemperatureSensors sensors(tree.root());
        QVERIFY(readingsOf(sensors).contains(u"SSD drivetemp=31"_s));
        tree.remove(u"sys/class/hwmon/hwmon1"_s);
        QVERIFY(readingsOf(sensors).contains(u"SSD drivetemp=?"_s));
        readOften(sensors);
        QVERIFY(readingsOf(sensors).filter(u"drivetemp"_s).isEmpty());
        QCOMPARE(readingsOf(sensors).last(), u"SSD nvme Composite=40.85"_s);
    }

    void replacedDeviceIsFoundAtOnce() {
        const FileTree tree;
        install(tree, raspberryPi);
        LinuxTemperatureSensors sensors(tree.root());
        readOften(sensors);
        tree.remove(u"sys/class/hwmon/hwmon0"_s);
        install(tree, raspberryPi); // under the same number, like a driver that is loaded again
        QCOMPARE(readingsOf(sensors), QStringList{u"tdie cpu_thermal=?"_s});
        QCOMPARE(readingsOf(sensors), QStringList{u"tdie cpu_thermal=48.686"_s});
    }

    void newDeviceAppears() {
        const FileTree tree;
        install(tree, raspberryPi);
        LinuxTemperatureSensors sensors(tree.root());
        QCOMPARE(readingsOf(sensors), QStringList{u"tdie cpu_thermal=48.686"_s});
        install(tree, "hwmon0|temp1_input 51000\nhwmon2|name nvme|temp1_input 33000");
        readOften(sensors);
        QCOMPARE(readingsOf(sensors), (QStringList{u"tdie cpu_thermal=51"_s, u"SSD nvme=33"_s}));
    }

    void sleepingDeviceIsNotAsked() {
        const FileTree tree;
        install(tree, "hwmon0|name amdgpu|temp1_input 44000|device/power/runtime_status suspended");
        LinuxTemperatureSensors sensors(tree.root());
        QCOMPARE(readingsOf(sensors), QStringList{u"tdie amdgpu=?"_s});
        tree.write(u"sys/class/hwmon/hwmon0/device/power/runtime_status"_s, "active\n");
        QCOMPARE(readingsOf(sensors), QStringList{u"tdie amdgpu=44"_s});
    }

    void idleSecondCardIsLeftAlone() {
        const FileTree tree;
        install(tree,
                "hwmon0|name amdgpu|temp1_input 44000|device/power/runtime_status active|device/power/control auto|"
                "device/class 0x030000|device/boot_vga 0");
        LinuxTemperatureSensors sensors(tree.root());
        QCOMPARE(readingsOf(sensors), QStringList{u"tdie amdgpu=44"_s});
        tree.write(u"sys/class/hwmon/hwmon0/temp1_input"_s, "48000\n");
        QCOMPARE(readingsOf(sensors), QStringList{u"tdie amdgpu=44"_s});
        tree.write(u"sys/class/hwmon/hwmon0/device/power/runtime_status"_s, "suspended\n");
        QCOMPARE(readingsOf(sensors), QStringList{u"tdie amdgpu=?"_s});
    }
};

QTEST_APPLESS_MAIN(HwmonSensorsTest)
#include "tst_hwmonsensors.moc"
