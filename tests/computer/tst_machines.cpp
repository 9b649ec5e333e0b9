#include "../platform/FileTree.h"
#include "ThisComputer.h"
#include "linux/LinuxKernelReadings.h"
#include "linux/LinuxTemperatureSensors.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

struct Machine {
    const char* name;   ///< of the fixture
    const char* change; ///< a line of a fixture that comes true a little later
    const char* model;
    const char* identifier;
    const char* chip;
    const char* cores;
    const char* memory;
    const char* thermal;
    const char* averages; ///< SoC, peak, SSD
    const char* sensors;
};

/// What the owner of each machine sees.
constexpr Machine machines[] = {
    {"desktop-intel", "", "PRIME Z390-A", "PRIME Z390-A", "Intel(R) Core(TM) i7-8700 CPU @ 3.20GHz",
     "6 Cores (6 Performance + 0 Efficiency)", "32 GB, 25 % used", "Normal", "35 36 37.85",
     "SSD nvme Sensor 1=51.85|pch_cannonlake=44|SSD nvme Composite=37.85|tdie coretemp Package id 0=36|tdie coretemp "
     "Core 0=34|acpitz=27.8"},
    {"desktop-amd", "", "ROG STRIX B550-F GAMING", "ROG STRIX B550-F GAMING", "AMD Ryzen 7 5800X 8-Core Processor",
     "8 Cores (8 Performance + 0 Efficiency)", "64 GB, 25 % used", "Normal", "44.5 48 40.85",
     "amdgpu mem=52|tdie k10temp Tctl=48|tdev asusec VRM=46|tdie amdgpu edge=44|SSD nvme Composite=40.85|tdie k10temp "
     "Tccd1=40|nct6798 SYSTIN=35"},
    {"laptop-hybrid", "", "HP Pavilion Plus Laptop 16-ab1xxx", "HP Pavilion Plus Laptop 16-ab1xxx",
     "Intel(R) Core(TM) Ultra 7 155H", "16 Cores (6 Performance + 10 Efficiency)", "16 GB, 50 % used", "Normal",
     "51 51 33.85", "tdie coretemp Package id 0=51|SSD nvme Composite=33.85"},
    {"laptop-hybrid", "sys/devices/pci0000:00/0000:03:00.0/power/runtime_status = active",
     "HP Pavilion Plus Laptop 16-ab1xxx", "HP Pavilion Plus Laptop 16-ab1xxx", "Intel(R) Core(TM) Ultra 7 155H",
     "16 Cores (6 Performance + 10 Efficiency)", "16 GB, 50 % used", "Normal", "47 51 33.85",
     "tdie coretemp Package id 0=51|tdie amdgpu edge=43|SSD nvme Composite=33.85"},
    {"server-two-sockets", "", "AS -2024US-TRT", "AS -2024US-TRT", "AMD EPYC 7543 32-Core Processor",
     "64 Cores (64 Performance + 0 Efficiency)", "512 GB, 25 % used", "Normal", "51 56 0",
     "tdie k10temp Tctl (0000:00:19.3)=56|tdie k10temp Tctl (0000:00:18.3)=50|tdev ir38064=47|jc42=38.5"},
    {"raspberry-pi-4", "", "Raspberry Pi 4 Model B Rev 1.4", "Raspberry Pi 4 Model B Rev 1.4", "Broadcom BCM2711",
     "4 Cores (4 Performance + 0 Efficiency)", "4 GB, 50 % used", "Normal", "48.686 48.686 0",
     "tdie cpu_thermal=48.686"},
    {"raspberry-pi-4", "sys/class/thermal/thermal_zone0/temp = 110000", "Raspberry Pi 4 Model B Rev 1.4",
     "Raspberry Pi 4 Model B Rev 1.4", "Broadcom BCM2711", "4 Cores (4 Performance + 0 Efficiency)", "4 GB, 50 % used",
     "Critical (Overheating)", "48.686 48.686 0", "tdie cpu_thermal=48.686"},
    {"raspberry-pi-5", "", "Raspberry Pi 5 Model B Rev 1.0", "Raspberry Pi 5 Model B Rev 1.0", "Broadcom BCM2712",
     "4 Cores (4 Performance + 0 Efficiency)", "8 GB, 25 % used", "Fair (Slightly Warm)", "52.35 52.35 0",
     "tdie cpu_thermal=52.35|rp1_adc=47.5"},
    {"raspberry-pi-5", "sys/class/thermal/thermal_zone0/temp = 49000", "Raspberry Pi 5 Model B Rev 1.0",
     "Raspberry Pi 5 Model B Rev 1.0", "Broadcom BCM2712", "4 Cores (4 Performance + 0 Efficiency)", "8 GB, 25 % used",
     "Nominal (Cool & Quiet)", "52.35 52.35 0", "tdie cpu_thermal=52.35|rp1_adc=47.5"},
    {"apple-silicon", "", "Apple MacBook Pro (14-inch, M1 Pro, 2021)", "Apple MacBook Pro (14-inch, M1 Pro, 2021)",
     "Apple M1 Pro", "8 Cores (6 Performance + 2 Efficiency)", "16 GB, 25 % used", "Normal", "0 0 36.5",
     "macsmc_hwmon WiFi/BT Module Temperature=38.25|SSD macsmc_hwmon NAND Flash Temperature=36.5|macsmc_hwmon Battery "
     "Hotspot Temperature=31.25"},
    {"apple-intel", "", "MacBook Pro", "MacBookPro15,1", "Intel(R) Core(TM) i7-8850H CPU @ 2.60GHz",
     "6 Cores (6 Performance + 0 Efficiency)", "16 GB, 25 % used", "Normal", "55 55 0",
     "tdie coretemp Package id 0=55|applesmc TB0T=33"},
    {"cloud-vm", "", "m6g.large", "m6g.large", "Arm Neoverse N1", "2 Cores (2 Performance + 0 Efficiency)",
     "8 GB, 25 % used", "Normal", "0 0 0", ""},
    {"container", "", "LXC Container", "LXC Container", "Intel(R) Xeon(R) E-2236 CPU @ 3.40GHz",
     "6 Cores (6 Performance + 0 Efficiency)", "2 GB, 25 % used", "Normal", "0 0 0", ""},
    {"mini-pc", "", "MINI-N100", "MINI-N100", "Intel(R) N100", "4 Cores (4 Performance + 0 Efficiency)",
     "16 GB, 25 % used", "Normal", "42 42 31", "tdie coretemp Package id 0=42|nct6775 SYSTIN=34|SSD drivetemp=31"},
    {"thinkpad", "", "ThinkPad X1 Carbon Gen 9", "20XWCTO1WW", "11th Gen Intel(R) Core(TM) i7-1165G7 @ 2.80GHz",
     "4 Cores (4 Performance + 0 Efficiency)", "16 GB, 25 % used", "Nominal (Cool & Quiet)", "47 47 0",
     "tdie coretemp Package id 0=47|thinkpad CPU=46"},
    {"dell", "", "XPS 13 9310", "XPS 13 9310", "11th Gen Intel(R) Core(TM) i7-1165G7 @ 2.80GHz",
     "4 Cores (4 Performance + 0 Efficiency)", "16 GB, 25 % used", "Normal", "60 60 0",
     "tdie coretemp Package id 0=60|dell_smm CPU=58|dell_smm SODIMM=41"},
    {"nas", "", "ProLiant MicroServer Gen10 Plus", "ProLiant MicroServer Gen10 Plus",
     "Intel(R) Pentium(R) Gold G5420 CPU @ 3.80GHz", "2 Cores (2 Performance + 0 Efficiency)", "8 GB, 38 % used",
     "Normal", "39 39 0", "tdie coretemp Package id 0=39"},
    {"nas", "sys/devices/ata1/0:0:0:0/block/sda/stat = 1001 0 8008 50 200 0 1600 90 0 120 140",
     "ProLiant MicroServer Gen10 Plus", "ProLiant MicroServer Gen10 Plus",
     "Intel(R) Pentium(R) Gold G5420 CPU @ 3.80GHz", "2 Cores (2 Performance + 0 Efficiency)", "8 GB, 38 % used",
     "Normal", "39 39 0", "tdie coretemp Package id 0=39|drivetemp (0:0:0:0)=35"},
    {"loongson", "", "Loongson-3A5000-7A2000-EVB", "Loongson-3A5000-7A2000-EVB", "Loongson-3A5000",
     "4 Cores (4 Performance + 0 Efficiency)", "16 GB, 51 % used", "Normal", "44 44 0",
     "tdie cputemp CPU 0 Temperature=44"},
    {"visionfive", "", "StarFive VisionFive 2 v1.3B", "StarFive VisionFive 2 v1.3B", "StarFive JH7110",
     "4 Cores (4 Performance + 0 Efficiency)", "8 GB, 50 % used", "Normal", "45.2 45.2 0", "tdie sfctemp=45.2"},
    {"phone-chip", "", "Lenovo ThinkPad X13s", "Lenovo ThinkPad X13s", "Qualcomm SC8280XP",
     "8 Cores (4 Performance + 4 Efficiency)", "15 GB, 50 % used", "Serious (Thermal Throttling)", "42 43 0",
     "tdie cluster0_thermal=43|tdie cpu0_thermal=41|mem_thermal=40"},
};

} // namespace

class MachinesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void machine_data() {
        QTest::addColumn<QString>("fixture");
        QTest::addColumn<QString>("change");
        QTest::addColumn<QString>("expected");
        for (const Machine& machine : machines) {
            QStringList lines;
            for (const char* text : {machine.model, machine.identifier, machine.chip, machine.cores, machine.memory,
                                     machine.thermal, machine.averages, machine.sensors})
                lines += QString::fromUtf8(text);
            const QString change = QString::fromUtf8(machine.change);
            QTest::addRow("%s%s", machine.name, change.isEmpty() ? "" : ", changed")
                << QString::fromUtf8(machine.name) << change << lines.join(u'\n');
        }
    }
    void machine() {
        QFETCH(const QString, fixture);
        QFETCH(const QString, change);
        const FileTree tree;
        QFile file(QStringLiteral(TARNWICK_FIXTURES "/machines/%1.tree").arg(fixture));
        QVERIFY(file.open(QIODevice::ReadOnly));
        for (const QByteArray& line : file.readAll().split('\n'))
            tree.installLine(QString::fromUtf8(line));
        std::atomic<int> seconds = 0; // go by with each question
        const auto clock = [&seconds] {
            return std::chrono::seconds(++seconds);
        };
        LinuxKernelReadings kernel(tree.root());
        LinuxTemperatureSensors sensors(tree.root(), {.clock = clock, .patience = std::chrono::minutes(1)});
        ThisComputer computer(kernel, sensors, clock);
        (void)computer.info();
        tree.installLine(change);
        const auto told = [&computer] {
            const MacHardwareInfo info = computer.info();
            QStringList readings;
            for (const MacThermalSensor& sensor : info.sensors)
                readings += u"%1=%2"_s.arg(sensor.name).arg(sensor.tempCelsius);
            return QStringList{
                info.modelName,
                info.modelIdentifier,
                info.chip,
                info.cpuCores,
                u"%1, %2 % used"_s.arg(info.memoryString.section(u' ', 0, 1)).arg(qRound(info.ramUsagePercent)),
                info.thermalState,
                u"%1 %2 %3"_s.arg(info.avgSocTemp).arg(info.peakSocTemp).arg(info.ssdTemp.value_or(0)),
                readings.join(u'|')}
                .join(u'\n');
        };
        QFETCH(const QString, expected);
        QTRY_COMPARE(told(), expected);
    }
};

QTEST_GUILESS_MAIN(MachinesTest)
#include "tst_machines.moc"
