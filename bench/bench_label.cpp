// One tick of the status item's label with all seven metrics pinned, on a machine with 20 temperature sensors; and the
// longest one when a sensor of the processor and a thermal zone take 200 ms.

#include "Figures.h"
#include "RealComputer.h"
#include "StatusItemLabel.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

using namespace tarnwick;

namespace {

/// A folder in place of the root of a machine: its temperature sensors are ordinary files.
bool writeSensors(const QString& root, int count) {
    for (int i = 0; i < count; ++i) {
        const QString device = QStringLiteral("%1/sys/class/hwmon/hwmon%2").arg(root).arg(i / 5);
        const auto write = [&](const QString& name, const QByteArray& text) {
            QFile file(device + u'/' + name);
            return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
        };
        const QString sensor = QStringLiteral("temp%1").arg(i % 5 + 1);
        if (!QDir().mkpath(device) || !write(QStringLiteral("name"), i / 5 == 3 ? "nvme\n" : "coretemp\n") ||
            !write(sensor + QStringLiteral("_input"), QByteArray::number(40'000 + i * 500) + '\n') ||
            !write(sensor + QStringLiteral("_label"), "Core " + QByteArray::number(i) + '\n'))
            return false;
    }
    return true;
}

} // namespace

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    const QTemporaryDir root;
    if (!writeSensors(root.path(), 20))
        return 2;
    std::chrono::nanoseconds now{};
    RealComputer real([&now] { return now; }, root.path());
    QList<Server> servers(10);
    AppSettings settings;
    settings.pinnedMenuBarItems = pins(PinPreset::All);

    const auto tick = [&] {
        now += std::chrono::seconds(1);
        return composeStatusItemLabel(servers, settings, real.computer);
    };
    constexpr int ticks = 2000;
    StatusItemLabel label = tick();
    for (int i = 0; i < ticks && !label.title.contains(QStringLiteral("SSD 5")); ++i)
        label = tick(); // the first reading of the drive may take a moment
    if (!label.title.contains(QStringLiteral("SSD 5"))) {
        std::fprintf(stderr, "unexpected label: %s\n", qPrintable(label.title));
        return 2;
    }
    double start = figures::cpuMilliseconds();
    const double mainStart = figures::cpuMilliseconds(CLOCK_THREAD_CPUTIME_ID);
    for (int i = 0; i < ticks; ++i)
        static_cast<void>(tick());
    const double perTick = (figures::cpuMilliseconds() - start) / ticks;
    const double perTickHere = (figures::cpuMilliseconds(CLOCK_THREAD_CPUTIME_ID) - mainStart) / ticks;

    // For comparison: only opening and reading the same 20 files.
    start = figures::cpuMilliseconds();
    for (int i = 0; i < ticks; ++i) {
        for (int sensor = 0; sensor < 20; ++sensor) {
            QFile file(QStringLiteral("%1/sys/class/hwmon/hwmon%2/temp%3_input")
                           .arg(root.path())
                           .arg(sensor / 5)
                           .arg(sensor % 5 + 1));
            if (!file.open(QIODevice::ReadOnly) || file.readAll().isEmpty())
                return 2;
        }
    }
    const double opening = (figures::cpuMilliseconds() - start) / ticks;
    figures::report("label tick, seven pins, 20 sensors", perTick, "ms", 0.3,
                    QStringLiteral("(opening and reading the 20 files: %1 ms)").arg(opening, 0, 'f', 3));
    figures::report("the same, on the main thread", perTickHere, "ms", 0.1);
    figures::report("an hour of label ticks, CPU", perTick * 3600 / 1000, "s", 2);

    for (const auto& [name, text] : {std::pair("hwmon/hwmon9/name", "cpu_thermal"),
                                     {"hwmon/hwmon9/temp1_input", RealComputer::slowValue},
                                     {"thermal/thermal_zone0/temp", RealComputer::slowValue}}) {
        QFile file(root.path() + QStringLiteral("/sys/class/") + QString::fromLatin1(name));
        if (!QDir().mkpath(QFileInfo(file).path()) || !file.open(QIODevice::WriteOnly) || file.write(text) < 0)
            return 2;
    }
    RealComputer slow([&now] { return now; }, root.path(), root.path());
    double longest = 0;
    for (int i = 0; i < ticks; ++i) {
        now += std::chrono::seconds(1);
        start = figures::wallMilliseconds();
        static_cast<void>(composeStatusItemLabel(servers, settings, slow.computer));
        static_cast<void>(slow.computer.info());
        longest = std::max(longest, figures::wallMilliseconds() - start);
    }
    figures::report("longest tick and snapshot, two sensors take 200 ms", longest, "ms", 20);
    return figures::exitStatus();
}
