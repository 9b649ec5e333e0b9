#include "FileTree.h"
#include "linux/LinuxTemperatureSensors.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

/// One machine: "ENTRY FILE CONTENT" a line, under /sys/class/hwmon; FILE may have folders.
using Capture = const char*;

constexpr Capture intelLaptop = R"(
hwmon0 name acpitz
hwmon0 temp1_input 27800
hwmon1 name nvme
hwmon1 temp1_input 37850
hwmon1 temp1_label Composite
hwmon1 temp2_input 51850
hwmon1 temp2_label Sensor 1
hwmon2 name BAT0
hwmon2 in0_input 12870
hwmon4 name iwlwifi_1
hwmon4 temp1_input 41000
hwmon10 name thinkpad
hwmon10 fan1_input 2650
hwmon10 temp1_input 46000
hwmon10 temp1_label CPU
hwmon10 temp3_input 0
hwmon9 name coretemp
hwmon9 temp1_input 47000
hwmon9 temp1_label Package id 0
hwmon9 temp2_input 45000
hwmon9 temp2_label Core 0
hwmon9 temp10_input 46000
hwmon9 temp10_label Core 12
)";

constexpr Capture ryzenDesktop = R"(
hwmon0 name nvme
hwmon0 temp1_input 40850
hwmon0 temp1_label Composite
hwmon1 name drivetemp
hwmon1 temp1_input 31000
hwmon2 name k10temp
hwmon2 temp1_input 66250
hwmon2 temp1_label Tctl
hwmon2 temp2_input 46250
hwmon2 temp2_label Tdie
hwmon3 name amdgpu
hwmon3 temp1_input 44000
hwmon3 temp1_label edge
hwmon3 temp3_input 52000
hwmon3 temp3_label mem
hwmon4 name asusec
hwmon4 temp1_input 49000
hwmon4 temp1_label VRM
hwmon5 name nct6798
hwmon5 temp1_input 35000
hwmon5 temp1_label SYSTIN
)";

constexpr Capture raspberryPi = R"(
hwmon0 name cpu_thermal
hwmon0 temp1_input 48686
hwmon1 name rpi_volt
hwmon1 in0_lcrit_alarm 0
)";

constexpr Capture brokenValues = R"(
hwmon0 name k10temp
hwmon0 temp1_input abc
hwmon0 temp1_label Tctl
hwmon0 temp2_input 99999999999999999999
hwmon0 temp2_label Tccd1
hwmon0 temp3_input -61000
hwmon0 temp3_label Tccd2
hwmon0 tempx_input 40000
hwmon1 temp1_input 42500
hwmon2 temp1_input 43500
hwmon2 temp1_label VRM
)";

void install(const FileTree& tree, const QByteArray& capture) {
    for (const QString& line : QString::fromLatin1(capture).split(u'\n', Qt::SkipEmptyParts)) {
        tree.write(u"sys/class/hwmon/%1/%2"_s.arg(line.section(u' ', 0, 0), line.section(u' ', 1, 1)),
                   line.section(u' ', 2).toLatin1() + '\n');
    }
}

/// "NAME=CELSIUS", with "?" for a name or a reading that is absent.
QStringList told(LinuxTemperatureSensors& sensors) {
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
        QTEST(told(sensors).join(u'|'), "expected");
    }

    void sameDriverTwice() {
        const FileTree tree;
        install(tree, "hwmon0 name nvme\nhwmon0 temp1_input 30000\nhwmon1 name nvme\nhwmon1 temp1_input 31000\n");
        tree.write(u"sys/devices/nvme0/model"_s, "one");
        tree.link(u"sys/class/hwmon/hwmon0/device"_s, tree.full(u"sys/devices/nvme0"_s));
        LinuxTemperatureSensors sensors(tree.root());
        QCOMPARE(told(sensors), (QStringList{u"SSD nvme (nvme0)=30"_s, u"SSD nvme (hwmon1)=31"_s}));
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
        install(tree, "hwmon0 name iwlwifi_1\nhwmon1 name acpitz\nhwmon1 temp1_input 30000\n");
        tree.link(u"sys/class/hwmon/hwmon0/temp1_input"_s, u"/proc/self/mem"_s); // reading its beginning fails with EIO
        LinuxTemperatureSensors sensors(tree.root());
        for (int read = 0; read < 30; ++read)
            QCOMPARE(told(sensors), (QStringList{u"iwlwifi_1=?"_s, u"acpitz=30"_s}));
    }

    void vanishedDeviceGoes() {
        const FileTree tree;
        install(tree, ryzenDesktop);
        LinuxTemperatureSensors sensors(tree.root());
        QVERIFY(told(sensors).contains(u"SSD drivetemp=31"_s));
        tree.remove(u"sys/class/hwmon/hwmon1"_s);
        QVERIFY(told(sensors).contains(u"SSD drivetemp=?"_s));
        for (int read = 0; read < 10; ++read)
            (void)sensors.read();
        QVERIFY(told(sensors).filter(u"drivetemp"_s).isEmpty());
        QCOMPARE(told(sensors).last(), u"SSD nvme Composite=40.85"_s);
    }

    void replacedDeviceIsFoundAtOnce() {
        const FileTree tree;
        install(tree, raspberryPi);
        LinuxTemperatureSensors sensors(tree.root());
        for (int read = 0; read < 15; ++read)
            (void)sensors.read();
        tree.remove(u"sys/class/hwmon/hwmon0"_s);
        install(tree, raspberryPi); // under the same number, as a driver that is loaded again
        QCOMPARE(told(sensors), QStringList{u"tdie cpu_thermal=?"_s});
        QCOMPARE(told(sensors), QStringList{u"tdie cpu_thermal=48.686"_s});
    }

    void newDeviceAppears() {
        const FileTree tree;
        install(tree, raspberryPi);
        LinuxTemperatureSensors sensors(tree.root());
        QCOMPARE(told(sensors), QStringList{u"tdie cpu_thermal=48.686"_s});
        install(tree, "hwmon0 temp1_input 51000\nhwmon2 name nvme\nhwmon2 temp1_input 33000\n");
        for (int read = 0; read < 10; ++read)
            (void)sensors.read();
        QCOMPARE(told(sensors), (QStringList{u"tdie cpu_thermal=51"_s, u"SSD nvme=33"_s}));
    }

    void sleepingDeviceIsNotAsked() {
        const FileTree tree;
        install(tree, "hwmon0 name amdgpu\nhwmon0 temp1_input 44000\nhwmon0 device/power/runtime_status suspended\n");
        LinuxTemperatureSensors sensors(tree.root());
        QCOMPARE(told(sensors), QStringList{u"tdie amdgpu=?"_s});
        tree.write(u"sys/class/hwmon/hwmon0/device/power/runtime_status"_s, "active\n");
        QCOMPARE(told(sensors), QStringList{u"tdie amdgpu=44"_s});
    }

    void idleSecondCardIsLeftAlone() {
        const FileTree tree;
        install(tree, "hwmon0 name amdgpu\nhwmon0 temp1_input 44000\nhwmon0 device/power/runtime_status active\n"
                      "hwmon0 device/power/control auto\nhwmon0 device/boot_vga 0\n");
        LinuxTemperatureSensors sensors(tree.root());
        QCOMPARE(told(sensors), QStringList{u"tdie amdgpu=44"_s});
        tree.write(u"sys/class/hwmon/hwmon0/temp1_input"_s, "48000\n");
        QCOMPARE(told(sensors), QStringList{u"tdie amdgpu=44"_s});
        tree.write(u"sys/class/hwmon/hwmon0/device/power/runtime_status"_s, "suspended\n");
        QCOMPARE(told(sensors), QStringList{u"tdie amdgpu=?"_s});
    }
};

QTEST_APPLESS_MAIN(HwmonSensorsTest)
#include "tst_hwmonsensors.moc"
