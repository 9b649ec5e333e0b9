#include "MacHardwareTexts.h"
#include "SampleComputer.h"
#include "linux/LinuxWords.h"

#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
using namespace tarnwick;

class MacHardwareTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cpuPercent() {
        using MacHardwareCollector::queryCpuUsage;
        constexpr std::uint32_t top = std::numeric_limits<std::uint32_t>::max();
        QCOMPARE(queryCpuUsage({1, 1, 6, 2}, {}), 40.0); // since boot
        QCOMPARE(queryCpuUsage({}, {}), 0.0);
        QCOMPARE(queryCpuUsage({9, 5, 7, 1}, CpuTicks{4, 5, 7, 0}), 100.0);
        QCOMPARE(queryCpuUsage({9, 5, 8, 1}, CpuTicks{9, 5, 7, 1}), 0.0);
        QCOMPARE(queryCpuUsage({9, 0, 30, 0}, CpuTicks{top, 0, 0, 0}), 25.0); // counters wrap
        QCOMPARE(queryCpuUsage({10, 0, 4, 0}, CpuTicks{0, 0, top - 5, 0}), 50.0);
        QCOMPARE(queryCpuUsage({top, top, top, top}, {}), 75.0);
    }

    void ramUsage() {
        constexpr quint64 installed = 16ULL << 30;
        const MemoryPages pages{.active = 262'144, .wired = 131'072, .compressed = 131'072, .pageSize = 16'384};
        const auto usage = MacHardwareCollector::queryRamUsage(installed, pages);
        QCOMPARE(usage.usedGB, 8.0);
        QCOMPARE(usage.totalGB, 16.0);
        QCOMPARE(usage.percent(), 50.0);
        QCOMPARE(MacHardwareCollector::queryRamUsage(installed / 4, pages).percent(), 100.0);
        QCOMPARE(MacHardwareCollector::queryRamUsage(std::nullopt, pages).percent(), 0.0);
        QCOMPARE(MacHardwareCollector::queryRamUsage(std::nullopt, pages).usedGB, 8.0);
        QCOMPARE(MacHardwareCollector::queryRamUsage(installed, std::nullopt).usedGB, 0.0);
        QCOMPARE(MacHardwareCollector::queryRamUsage(installed, std::nullopt).totalGB, 16.0);
    }

    void diskUsage() {
        using Usage = std::pair<double, double>;
        const auto usage = [](std::optional<qint64> size, std::optional<qint64> free) {
            const auto disk = MacHardwareCollector::queryDiskUsage(VolumeSpace{size, free});
            return Usage(disk.usedGB, disk.totalGB);
        };
        using Limits = std::numeric_limits<qint64>;
        constexpr qint64 gigabyte = qint64{1} << 30;
        QCOMPARE(usage(gigabyte * 5 / 4, gigabyte), Usage(0.3, 1.3)); // halves round away from zero
        QCOMPARE(usage(10 * gigabyte, 11 * gigabyte), Usage(0, 10));
        QCOMPARE(usage(gigabyte, {}), Usage(1, 1));
        QCOMPARE(usage({}, 5), Usage(0, 0));
        QCOMPARE(usage(Limits::max(), Limits::min()), Usage(17179869184.0, 8589934592.0));
        QCOMPARE(MacHardwareCollector::queryDiskUsage({}).totalGB, 0.0);
    }

    void firstAcceleratorThatTellsWins() {
        const QVariantMap wrongStatistics{{u"PerformanceStatistics"_s, 50}};
        QCOMPARE(MacHardwareCollector::queryGpuUsage(
                     {{}, wrongStatistics, accelerator(u"90"_s), accelerator(12), accelerator(99)}),
                 std::optional(12.0));
    }

    void kernelValuesOfAnotherWidth() {
        QCOMPARE(MacHardwareTexts::kernelInt(bytesOf(qint64{3})), std::nullopt);
        QCOMPARE(MacHardwareTexts::kernelInt64(bytesOf(qint32{3})), std::nullopt);
        QCOMPARE(MacHardwareTexts::kernelText(QByteArray()), std::nullopt);
    }

    void modelNames() {
        const QList<std::pair<QString, QString>> identifiersByName{
            {u"Mac mini"_s, u"Macmini9,1 xMINIx Mac14,12 Mac14,3 Mac16,10 Mac16,11"_s},
            {u"MacBook Air"_s, u"MacBookAir10,1"_s},
            {u"MacBook Pro"_s, u"MacBookPro18,3 macbook"_s},
            {u"Mac Studio"_s, u"Mac13,2 Mac14,13 Mac14,14 Mac13,10 studio"_s},
            {u"iMac"_s, u"iMac21,1 iMacPro1,1"_s},
            {u"Mac Pro"_s, u"MacPro7,1"_s},
            {u"Apple Silicon Mac"_s, u"mac14,3 Mac14,15 Mac14,2 "_s},
        };
        for (const auto& [name, identifiers] : identifiersByName) {
            for (const QString& identifier : identifiers.split(u' '))
                QCOMPARE(identifier + u": "_s + MacHardwareCollector::friendlyModelName(identifier),
                         identifier + u": "_s + name);
        }
    }

    void fixedTexts() {
        using namespace MacHardwareTexts;
        QCOMPARE(coreText({}, {}, macWords), u"10 Cores (4 Performance + 6 Efficiency)"_s);
        QCOMPARE(coreText(8, {}, macWords), u"14 Cores (8 Performance + 6 Efficiency)"_s);
        QCOMPARE(coreText(2147483647, 2147483647, macWords),
                 u"4294967294 Cores (2147483647 Performance + 2147483647 Efficiency)"_s);
        QCOMPARE(coreText(2, 0, macWords), u"2 Cores (2 Performance + 0 Efficiency)"_s);
        QCOMPARE(coreText(0, 4, linuxWords), u"4 Cores"_s);
        QCOMPARE(memoryText(17179869184, macWords), u"16 GB Unified Memory"_s);
        QCOMPARE(memoryText((qint64{1} << 30) * 5 / 2, linuxWords), u"3 GB"_s);
        QCOMPARE(memoryText({}, macWords), u"16 GB Unified Memory"_s);
    }

    void systemTexts() {
        const auto text = [](const QString& name, const QString& version) {
            return MacHardwareTexts::systemText({.name = name, .version = version, .versionText = {}});
        };
        QCOMPARE(text(u"macOS"_s, u"14.5.2"_s), u"macOS 14.5"_s);
        QCOMPARE(text(u"Ubuntu"_s, u"22.04"_s), u"Ubuntu 22.04"_s);
        QCOMPARE(text(u"Debian GNU/Linux"_s, u"12"_s), u"Debian GNU/Linux 12"_s);
        QCOMPARE(text(u"Arch Linux"_s, {}), u"Arch Linux"_s);
        QCOMPARE(text(u"%2 %1"_s, u"1"_s), u"%2 %1 1"_s); // a name that looks like a format
    }

    void uptime() {
        using MacHardwareTexts::uptimeText;
        constexpr qint64 boot = 1'700'000'000;
        const auto text = [](qint64 up) {
            return uptimeText(bootTime(boot), boot + up);
        };
        QCOMPARE(text(59), u"0h 0m"_s);
        QCOMPARE(text(86'399), u"23h 59m"_s);
        QCOMPARE(text(86'400), u"1d 0h 0m"_s);
        QCOMPARE(text(14 * 86'400 + 6 * 3600), u"14d 6h 0m"_s);
        QCOMPARE(text(-5000), u"0h 0m"_s); // the clock was set back
        QCOMPARE(uptimeText(bytesOf(boot), boot), u"Unknown"_s);
        QCOMPARE(uptimeText(bootTime(std::numeric_limits<qint64>::min()), boot), u"Unknown"_s);
    }
};

QTEST_APPLESS_MAIN(MacHardwareTest)
#include "tst_machardware.moc"
