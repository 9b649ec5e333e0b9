#include "LoadArithmetic.h"
#include "MacHardwareCollector.h"
#include "MacHardwareTexts.h"

#include <QHash>
#include <QTest>

#include <atomic>
#include <latch>
#include <limits>
#include <mutex>
#include <thread>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

template <typename Integer>
QByteArray bytes(Integer number) {
    return {reinterpret_cast<const char*>(&number), sizeof number};
}

QByteArray bootTime(qint64 seconds) {
    return bytes(seconds) + bytes(qint64{999'999});
}

class ScriptedKernel : public KernelReadings {
public:
    QHash<QByteArray, QByteArray> values;
    std::optional<QString> makersName;
    std::optional<CpuTicks> ticks;
    std::optional<MemoryPages> pages;
    QList<QVariantMap> cards;
    OperatingSystem os;
    ThermalState thermal = ThermalState::unknown;
    std::optional<VolumeSpace> volume;
    qint64 now = 0;

    std::optional<QByteArray> value(const char* name) override {
        const auto found = values.constFind(name);
        return found == values.cend() ? std::nullopt : std::optional(*found);
    }
    std::optional<QString> makersModelName() override { return makersName; }
    std::optional<CpuTicks> cpuTicks() override { return ticks; }
    std::optional<MemoryPages> memoryPages() override { return pages; }
    QList<QVariantMap> accelerators() override { return cards; }
    OperatingSystem operatingSystem() override { return os; }
    ThermalState thermalState() override { return thermal; }
    std::optional<VolumeSpace> homeVolume() override { return volume; }
    qint64 wallClockSeconds() override { return now; }
};

class NoSensors : public TemperatureSensors {
public:
    std::optional<QList<TemperatureReading>> read() override { return std::nullopt; }
};

/// Counters in which the step to the n-th sample is 100 ticks, `busyIn(n)` of them busy.
class CountingKernel : public ScriptedKernel {
public:
    static std::uint32_t busyIn(std::uint32_t n) { return n * 37 % 101; }

    std::optional<CpuTicks> cpuTicks() override {
        std::unique_lock lock(mutex_);
        const std::uint32_t busy = busyIn(++sample_);
        counters_.user += busy;
        counters_.idle += 100 - busy;
        lastSampleHere = sample_;
        const CpuTicks sample = counters_;
        lock.unlock();
        std::this_thread::yield(); // invites the other thread to measure in between
        return sample;
    }
    static thread_local std::uint32_t lastSampleHere;

private:
    std::mutex mutex_;
    std::uint32_t sample_ = 0;
    CpuTicks counters_{.user = 4'294'000'000U}; // wraps on the way
};
thread_local std::uint32_t CountingKernel::lastSampleHere = 0;

QVariantMap card(const QVariant& utilisation) {
    return {{u"PerformanceStatistics"_s, QVariantMap{{u"Device Utilization %"_s, utilisation}}}};
}

} // namespace

class MacHardwareTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// Stands first: it tests the first measurement of the process.
    void cpuSampleIsKeptBetweenCalls() {
        ScriptedKernel kernel;
        kernel.ticks = CpuTicks{.user = 20, .system = 10, .idle = 60, .nice = 10};
        QCOMPARE(MacHardwareCollector::queryCpuUsage(kernel), 40.0);
        QCOMPARE(MacHardwareCollector::queryCpuUsage(kernel), 0.0);
        kernel.ticks.reset();
        QCOMPARE(MacHardwareCollector::queryCpuUsage(kernel), 0.0);
        kernel.ticks = CpuTicks{.user = 50, .system = 10, .idle = 70, .nice = 10};
        QCOMPARE(MacHardwareCollector::queryCpuUsage(kernel), 75.0);
    }

    void cpuSampleIsSharedByThreads() {
        CountingKernel kernel;
        (void)MacHardwareCollector::queryCpuUsage(kernel);
        std::atomic<int> wrong = 0;
        std::latch start(2);
        const auto measure = [&] {
            start.arrive_and_wait();
            for (int call = 0; call < 20'000; ++call) {
                const double percent = MacHardwareCollector::queryCpuUsage(kernel);
                wrong += percent == CountingKernel::busyIn(CountingKernel::lastSampleHere) / 100.0 * 100 ? 0 : 1;
            }
        };
        std::thread probe(measure);
        measure();
        probe.join();
        QCOMPARE(wrong.load(), 0);
    }

    void cpuPercent() {
        using LoadArithmetic::cpuPercent;
        constexpr std::uint32_t top = std::numeric_limits<std::uint32_t>::max();
        QCOMPARE(cpuPercent({1, 1, 6, 2}, {}), 40.0); // since boot
        QCOMPARE(cpuPercent({}, {}), 0.0);
        QCOMPARE(cpuPercent({9, 5, 7, 1}, CpuTicks{4, 5, 7, 0}), 100.0);
        QCOMPARE(cpuPercent({9, 5, 8, 1}, CpuTicks{9, 5, 7, 1}), 0.0);
        QCOMPARE(cpuPercent({9, 0, 30, 0}, CpuTicks{top, 0, 0, 0}), 25.0); // counters wrap
        QCOMPARE(cpuPercent({10, 0, 4, 0}, CpuTicks{0, 0, top - 5, 0}), 50.0);
        QCOMPARE(cpuPercent({top, top, top, top}, {}), 75.0);
    }

    void ramUsage() {
        constexpr quint64 installed = 16ULL << 30;
        const MemoryPages pages{.active = 262'144, .wired = 131'072, .compressed = 131'072, .pageSize = 16'384};
        const auto usage = LoadArithmetic::ramUsage(installed, pages);
        QCOMPARE(usage.usedGB, 8.0);
        QCOMPARE(usage.totalGB, 16.0);
        QCOMPARE(usage.percent, 50.0);
        QCOMPARE(LoadArithmetic::ramUsage(installed / 4, pages).percent, 100.0);
        QCOMPARE(LoadArithmetic::ramUsage(std::nullopt, pages).percent, 0.0);
        QCOMPARE(LoadArithmetic::ramUsage(std::nullopt, pages).usedGB, 8.0);
        QCOMPARE(LoadArithmetic::ramUsage(installed, std::nullopt).usedGB, 0.0);
        QCOMPARE(LoadArithmetic::ramUsage(installed, std::nullopt).totalGB, 16.0);
    }

    void diskUsage() {
        using Usage = std::pair<double, double>;
        const auto usage = [](std::optional<qint64> size, std::optional<qint64> free) {
            const auto disk = LoadArithmetic::diskUsage(VolumeSpace{size, free});
            return Usage(disk.usedGB, disk.totalGB);
        };
        using Limits = std::numeric_limits<qint64>;
        constexpr qint64 gigabyte = qint64{1} << 30;
        QCOMPARE(usage(gigabyte * 5 / 4, gigabyte), Usage(0.3, 1.3)); // halves round away from zero
        QCOMPARE(usage(10 * gigabyte, 11 * gigabyte), Usage(0, 10));
        QCOMPARE(usage(gigabyte, {}), Usage(1, 1));
        QCOMPARE(usage({}, 5), Usage(0, 0));
        QCOMPARE(usage(Limits::max(), Limits::min()), Usage(17179869184.0, 8589934592.0));
        QCOMPARE(LoadArithmetic::diskUsage({}).totalGB, 0.0);
    }

    void firstAcceleratorThatTellsWins() {
        const QVariantMap wrongStatistics{{u"PerformanceStatistics"_s, 50}};
        QCOMPARE(LoadArithmetic::gpuPercent({{}, wrongStatistics, card(u"90"_s), card(12), card(99)}), 12.0);
        QCOMPARE(LoadArithmetic::gpuPercent({card(250.5)}), 250.5);
        QCOMPARE(LoadArithmetic::gpuPercent({card(QVariant())}), 0.0);
        QCOMPARE(LoadArithmetic::gpuPercent({}), 0.0);
    }

    void kernelValues() {
        using namespace MacHardwareTexts;
        QCOMPARE(kernelText(QByteArray("  Apple M2 Pro \n\0junk", 20)), std::optional(u"Apple M2 Pro"_s));
        QCOMPARE(kernelText(QByteArray("no terminator")), std::optional(u"no terminator"_s));
        QCOMPARE(kernelText(QByteArray("\0", 1)), std::optional(u""_s));
        QCOMPARE(kernelText(QByteArray()), std::nullopt);
        QCOMPARE(kernelText(std::nullopt), std::nullopt);
        QCOMPARE(kernelInt(bytes(qint32{-3})), std::optional<qint64>(-3));
        QCOMPARE(kernelInt(bytes(qint64{3})), std::nullopt);
        QCOMPARE(kernelInt64(bytes(qint64{1} << 40)), std::optional(qint64{1} << 40));
        QCOMPARE(kernelInt64(bytes(qint32{3})), std::nullopt);
    }

    void modelNames() {
        const QList<std::pair<QString, QString>> identifiersByName{
            {u"Mac mini"_s, u"Macmini9,1 xMINIx Mac14,12 Mac14,3 Mac16,11"_s},
            {u"MacBook Air"_s, u"MacBookAir10,1"_s},
            {u"MacBook Pro"_s, u"MacBookPro18,3 macbook"_s},
            {u"Mac Studio"_s, u"Mac13,2 Mac14,13 Mac13,10 studio"_s},
            {u"iMac"_s, u"iMac21,1 iMacPro1,1"_s},
            {u"Mac Pro"_s, u"MacPro7,1"_s},
            {u"Apple Silicon Mac"_s, u"mac14,3 Mac14,15 Mac14,2 "_s},
        };
        for (const auto& [name, identifiers] : identifiersByName) {
            for (const QString& identifier : identifiers.split(u' '))
                QCOMPARE(identifier + u": "_s + MacHardwareTexts::friendlyModelName(identifier),
                         identifier + u": "_s + name);
        }
    }

    void fixedTexts() {
        using namespace MacHardwareTexts;
        QCOMPARE(coreText({}, {}), u"10 Cores (4 Performance + 6 Efficiency)"_s);
        QCOMPARE(coreText(8, {}), u"14 Cores (8 Performance + 6 Efficiency)"_s);
        QCOMPARE(coreText(2147483647, 2147483647),
                 u"4294967294 Cores (2147483647 Performance + 2147483647 Efficiency)"_s);
        QCOMPARE(memoryText(17179869184), u"16 GB Unified Memory"_s);
        QCOMPARE(memoryText(25769803776), u"24 GB Unified Memory"_s);
        QCOMPARE(memoryText((qint64{1} << 30) * 5 / 2), u"3 GB Unified Memory"_s);
        QCOMPARE(memoryText({}), u"16 GB Unified Memory"_s);
        QCOMPARE(thermalStateText(ThermalState::serious), u"Serious (Thermal Throttling)"_s);
        QCOMPARE(thermalStateText(static_cast<ThermalState>(77)), u"Normal"_s);
    }

    void systemTexts() {
        const auto text = [](const QString& name, const QString& version) {
            return MacHardwareTexts::systemText({.name = name, .version = version, .versionText = {}});
        };
        QCOMPARE(text(u"macOS"_s, u"15.1"_s), u"macOS 15.1"_s);
        QCOMPARE(text(u"macOS"_s, u"14.5.2"_s), u"macOS 14.5"_s);
        QCOMPARE(text(u"Ubuntu"_s, u"22.04"_s), u"Ubuntu 22.04"_s);
        QCOMPARE(text(u"Debian GNU/Linux"_s, u"12"_s), u"Debian GNU/Linux 12"_s);
        QCOMPARE(text(u"Arch Linux"_s, {}), u"Arch Linux"_s);
        QCOMPARE(text(u"%2 %1"_s, u"1"_s), u"%2 %1 1"_s); // a name like a format
    }

    void uptime() {
        using MacHardwareTexts::uptimeText;
        constexpr qint64 boot = 1'700'000'000;
        const auto text = [](qint64 up) {
            return uptimeText(bootTime(boot), boot + up);
        };
        QCOMPARE(text(59), u"0h 0m"_s);
        QCOMPARE(text(3725), u"1h 2m"_s);
        QCOMPARE(text(86'399), u"23h 59m"_s);
        QCOMPARE(text(86'400), u"1d 0h 0m"_s);
        QCOMPARE(text(14 * 86'400 + 6 * 3600), u"14d 6h 0m"_s);
        QCOMPARE(text(-5000), u"0h 0m"_s); // the clock was set back
        QCOMPARE(uptimeText(std::nullopt, boot), u"Unknown"_s);
        QCOMPARE(uptimeText(bytes(boot), boot), u"Unknown"_s);
    }

    void collectFallsBackThenKeepsTheDescription() {
        ScriptedKernel kernel;
        NoSensors sensors;
        kernel.values["hw.model"] = "MacBookAir10,1";
        kernel.os = {.name = u"macOS"_s, .version = u"14.5"_s, .versionText = u"Version 14.5 (Build 23F79)"_s};
        const MacHardwareInfo first = MacHardwareCollector::collect(kernel, sensors);
        MacHardwareInfo expected;
        expected.modelName = u"MacBook Air"_s;
        expected.modelIdentifier = u"MacBookAir10,1"_s;
        expected.chip = u"Apple Silicon"_s;
        expected.cpuCores = u"10 Cores (4 Performance + 6 Efficiency)"_s;
        expected.gpuCores = u"Integrated GPU (Metal)"_s;
        expected.memoryString = u"16 GB Unified Memory"_s;
        expected.osVersion = u"macOS 14.5"_s;
        expected.osBuild = u"Version 14.5 (Build 23F79)"_s;
        expected.kernelVersion = u"Darwin"_s;
        expected.uptimeString = u"Unknown"_s;
        expected.thermalState = u"Normal"_s;
        QCOMPARE(first, expected);

        kernel.values["hw.model"] = "Macmini9,1";
        kernel.values["hw.memsize"] = bytes(qint64{8} << 30);
        kernel.values["kern.boottime"] = bootTime(1000);
        kernel.makersName = u"Workstation 5"_s;
        kernel.os.versionText = u"Version 14.6"_s;
        kernel.thermal = ThermalState::fair;
        kernel.cards = {card(7)};
        kernel.pages = MemoryPages{.active = 1U << 18, .pageSize = 4096};
        kernel.now = 1000 + 3725;
        expected.modelName = u"Workstation 5"_s;
        expected.osBuild = u"Version 14.6"_s;
        expected.uptimeString = u"1h 2m"_s;
        expected.thermalState = u"Fair (Slightly Warm)"_s;
        expected.gpuUsagePercent = 7;
        expected.ramUsedGB = 1;
        expected.ramTotalGB = 8;
        expected.ramUsagePercent = 12.5;
        QCOMPARE(MacHardwareCollector::collect(kernel, sensors), expected);
    }
};

QTEST_APPLESS_MAIN(MacHardwareTest)
#include "tst_machardware.moc"
