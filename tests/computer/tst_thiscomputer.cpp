#include "NoThreads.h"
#include "SampleComputer.h"

#include <QTest>

#include <atomic>
#include <latch>
#include <thread>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace std::chrono_literals;

namespace {

/// Each step to the next sample is 100 ticks; the counters wrap on the way.
class CountingKernel : public ScriptedKernel {
public:
    std::optional<CpuTicks> cpuTicks() override {
        const std::uint32_t steps = ++steps_;
        std::this_thread::yield(); // gives the other thread a chance to measure in between
        return CpuTicks{.user = 4'294'900'000U + 30 * steps, .idle = 70 * steps};
    }

private:
    std::atomic<std::uint32_t> steps_ = 0;
};

/// The readings of the home volume and of the graphics card hang until `mayAnswer`.
class HangingKernel : public ScriptedKernel {
public:
    std::latch isAsked{2};
    std::latch mayAnswer{1};
    std::atomic<int> questions = 0;

    std::optional<VolumeSpace> homeVolume() override {
        hang();
        return VolumeSpace{.size = qint64{1} << 30, .free = 0};
    }
    QList<QVariantMap> accelerators() override {
        hang();
        return {accelerator(7)};
    }

private:
    void hang() {
        ++questions;
        isAsked.count_down();
        mayAnswer.wait();
    }
};

} // namespace

class ThisComputerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void twoQuestionsWithinASecondGetTheSameFigures() {
        SampleComputer sample;
        ThisComputer& computer = sample.computer;
        const auto figures = [&computer] {
            return std::tuple(computer.cpuPercent(), computer.gpuPercent(), computer.ram().percent(),
                              computer.disk().usedGB, computer.thermals(SensorGroup::drives).ssd,
                              computer.socTemperature());
        };
        const auto first = figures();
        QCOMPARE(computer.disk(), (SpaceUsage{.usedGB = 120.3, .totalGB = 460.4}));
        sample.setCpu(90);
        sample.kernel.cards = {accelerator(55)};
        sample.setRam(25);
        sample.kernel.volume->free = 0;
        sample.sensors.readings = {{{u"tdie"_s, 80.0}, {u"SSD"_s, 60.0}}};
        sample.now += ThisComputer::maximumAge - 1ns;
        QVERIFY(figures() == first);
        QCOMPARE(computer.info(), SampleComputer::macMini());
        sample.now += 1ns;
        QVERIFY(figures() == std::tuple(90.0, 55.0, 25.0, 460.4, std::optional(60.0), std::optional(80.0)));
        QCOMPARE(computer.info().cpuUsagePercent, 90.0);
        QVERIFY2(ThisComputer::maximumAge < 950ms, "a timer of one second may be 50 ms early");
    }

    void equalSensorsStandInTheSystemsOrder() {
        SampleComputer sample;
        sample.sensors.readings = {{{u"SSD"_s, 30.0, 0}, {u"tdie"_s, 30.0, 1}, {u"zone"_s, 30.0, 2}}};
        QStringList names;
        for (const MacThermalSensor& sensor : sample.computer.info().sensors)
            names << sensor.name;
        QCOMPARE(names, (QStringList{u"SSD"_s, u"tdie"_s, u"zone"_s}));
    }

    void readsOnlyWhatIsAskedFor() {
        SampleComputer sample;
        QVERIFY(sample.kernel.asked.isEmpty());
        (void)sample.computer.gpuPercent();
        QCOMPARE(sample.kernel.asked, QStringList{u"gpu"_s});
        (void)sample.computer.ram();
        QCOMPARE(sample.kernel.asked, (QStringList{u"gpu"_s, u"ram"_s}));
        QVERIFY(sample.sensors.asked.isEmpty());
        (void)sample.computer.thermals(SensorGroup::drives);
        QCOMPARE(sample.sensors.asked, QList{SensorGroup::drives});
        (void)sample.computer.info();
        QCOMPARE(sample.kernel.asked, (QStringList{u"gpu"_s, u"ram"_s, u"cpu"_s}));
        QCOMPARE(sample.sensors.asked, (QList{SensorGroup::drives, SensorGroup::others, SensorGroup::processor}));
    }

    void aFailedMeasurementKeepsThePreviousSample() {
        SampleComputer sample;
        sample.kernel.ticks = CpuTicks{.user = 20, .system = 10, .idle = 60, .nice = 10};
        const auto measure = [&sample](const std::optional<CpuTicks>& ticks) {
            sample.kernel.ticks = ticks;
            sample.letTimePass();
            return sample.computer.cpuPercent();
        };
        QCOMPARE(measure(CpuTicks{.user = 20, .system = 10, .idle = 60, .nice = 10}), 40.0); // since boot
        QCOMPARE(measure(sample.kernel.ticks), 0.0);
        QCOMPARE(measure(std::nullopt), 0.0);
        QCOMPARE(measure(CpuTicks{.user = 50, .system = 10, .idle = 70, .nice = 10}), 75.0);
    }

    void threadsShareOneSample() {
        CountingKernel kernel;
        ScriptedSensors sensors;
        std::atomic<qint64> now = 0;
        ThisComputer computer(kernel, sensors, macWords,
                              [&now] { return std::chrono::seconds(++now); }); // every reading is too old
        (void)computer.cpuPercent();
        std::atomic<int> wrong = 0;
        std::latch start(2);
        const auto measure = [&] {
            start.arrive_and_wait();
            for (int call = 0; call < 2'000; ++call)
                wrong += computer.cpuPercent() == 30 ? 0 : 1;
        };
        std::thread probe(measure);
        measure();
        probe.join();
        QCOMPARE(wrong.load(), 0);
    }

    void whatHangsHoldsUpNothingElse() {
        HangingKernel kernel;
        kernel.ticks = CpuTicks{.user = 1, .idle = 3};
        ScriptedSensors sensors;
        std::atomic<std::chrono::seconds> now(1h);
        ThisComputer computer(kernel, sensors, macWords, [&now] { return now.load(); });
        const QFuture<ProbedFigures> figures = computer.figures();
        QCOMPARE(computer.gpuPercent(), std::nullopt);
        kernel.isAsked.wait();
        QCOMPARE(computer.info().cpuUsagePercent, 25.0);
        const QFuture<ProbedFigures> asMany[] = {computer.figures(), computer.figures(), computer.figures()};
        QVERIFY(!asMany[0].isFinished());
        now = 1h + 2s; // no reading is shared for as long as that
        kernel.mayAnswer.count_down();
        QCOMPARE(figures.result().disk.totalGB, 1.0);
        QCOMPARE(asMany[2].result().gpuPercent, 7.0);
        QVERIFY(kernel.questions <= 3); // the disk once, the graphics card perhaps again
        QTRY_COMPARE(computer.gpuPercent(), 7.0);
    }

    void withoutAThreadNobodyWaits() {
        SampleComputer sample;
        {
            const NoThreads scarce;
            QVERIFY(sample.computer.figures().isCanceled());
        }
        QCOMPARE(sample.computer.figures().result().disk.totalGB, 460.4);
    }

    void whatCannotBeReadFallsBackAndTheDescriptionStays() {
        ScriptedKernel kernel;
        ScriptedSensors sensors;
        std::chrono::nanoseconds now = 1h;
        ThisComputer computer(kernel, sensors, macWords, [&now] { return now; });
        kernel.values["hw.model"] = "MacBookAir10,1";
        const auto texts = [&computer] {
            const MacHardwareInfo info = computer.info();
            return QStringList{info.modelName,    info.chip,     info.cpuCores,      info.gpuCores,
                               info.memoryString, info.osBuild,  info.kernelVersion, info.uptimeString,
                               info.thermalState, info.osVersion}
                .join(u'|');
        };
        QCOMPARE(texts(), u"MacBook Air|Apple Silicon|10 Cores (4 Performance + 6 Efficiency)|Integrated GPU (Metal)|"
                          "16 GB Unified Memory||Darwin|Unknown|Normal|"_s);
        QCOMPARE(computer.info().ramTotalGB, 0.0);
        now += 1s;
        kernel.values["hw.model"] = "Macmini9,1";
        kernel.values["kern.boottime"] = bootTime(1000);
        kernel.now = 1000 + 3725;
        kernel.os.versionText = u"Version 14.6"_s;
        kernel.thermal = ThermalState::fair;
        QCOMPARE(texts(), u"MacBook Air|Apple Silicon|10 Cores (4 Performance + 6 Efficiency)|Integrated GPU (Metal)|"
                          "16 GB Unified Memory|Version 14.6|Darwin|1h 2m|Fair (Slightly Warm)|"_s);
    }
};

QTEST_APPLESS_MAIN(ThisComputerTest)
#include "tst_thiscomputer.moc"
