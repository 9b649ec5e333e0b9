// Tarnwick in the words of macOS, on a Mac that is played: played-mac. For pictures alone; its servers are real.
#include "../tests/computer/SampleComputer.h"
#include "AppDelegate.h"
#include "DesktopPopover.h"
#include "DesktopStatusItem.h"

#include <QGuiApplication>
#include <QPluginLoader>
#include <QThreadPool>

using namespace Qt::StringLiterals;
using namespace tarnwick;

Q_IMPORT_PLUGIN(ViewsModule)

namespace {

/// The sample computer's kernel, with a name that says what it is. Any thread: it does not note what is asked.
class PlayedKernel : public ScriptedKernel {
public:
    PlayedKernel() : ScriptedKernel(SampleComputer().kernel) {
        values["machdep.cpu.brand_string"] = "Apple M2 Pro, played";
        os.versionText += u", played"_s;
    }
    std::optional<CpuTicks> cpuTicks() override {
        ticks->user += 125;
        ticks->idle += 875;
        return ticks;
    }
    std::optional<MemoryPages> memoryPages() override { return pages; }
    QList<QVariantMap> accelerators() override { return cards; }
    std::optional<VolumeSpace> homeVolume() override { return volume; }
};

/// As many sensors as such a Mac has, under the names that they have there.
QList<TemperatureReading> playedSensors() {
    struct Family {
        QStringView name;
        int count;
        double first;
        double last;
    };
    QList<TemperatureReading> sensors;
    for (const Family& family : {Family{u"PMU tdie%1", 14, 36.4, 57.8}, Family{u"PMU tdev%1", 8, 31.2, 38.6},
                                 Family{u"PMU2 tdie%1", 8, 35.1, 44.9}, Family{u"PMU2 tdev%1", 4, 30.3, 34.0},
                                 Family{u"PMU tcal", 1, 51.9, 51.9}, Family{u"PMU2 tcal", 1, 51.9, 51.9},
                                 Family{u"NAND CH0 temp", 1, 32.0, 32.0}})
        for (int i = 0; i < family.count; ++i) {
            const QString name = family.name.toString();
            sensors += {family.count > 1 ? name.arg(i + 1) : name,
                        family.first + (family.last - family.first) * i / std::max(1, family.count - 1)};
        }
    return sensors;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication::setApplicationName(u"tarnwick"_s);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    const QGuiApplication application(argc, argv);

    PlayedKernel kernel;
    ScriptedSensors sensors;
    sensors.readings = playedSensors();
    ThisComputer computer(kernel, sensors, macWords);
    AppDelegate delegate({
        .store = StoreCollaborators::real(computer),
        .computer = computer,
        .clock = ThisComputer::steadyTime,
        .statusItem = std::make_unique<DesktopStatusItem>(),
        .popover = std::make_unique<DesktopPopover>(),
        .views = [] { return qobject_cast<ViewFactory*>(QPluginLoader::staticInstances().value(0)); },
    });
    delegate.applicationDidFinishLaunching();
    const int status = QCoreApplication::exec();
    QThreadPool::globalInstance()->waitForDone(); // a probe may be reading the computer
    return status;
}
