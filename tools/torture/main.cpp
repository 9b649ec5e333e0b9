// Puts the program through one kind of trouble that its users meet once in years, and prints what came of it: a row of
// scripts/torture's table.
//
//   torture CASE PROGRAM LIBRARY PERCENT
//
// LIBRARY is the one of FaultySystem.cpp. PERCENT of all rounds are run. It fails when anything went wrong. Without a
// known case it prints their names.

#include "Trial.h"

#include <QElapsedTimer>
#include <QGuiApplication>

#include <algorithm>
#include <array>
#include <cstdio>

using namespace Qt::StringLiterals;
using namespace tarnwick;

void Trial::expect(const QString& reason) {
    if (!reason.isEmpty())
        failures << u"round %1: %2"_s.arg(rounds).arg(reason);
}

void Trial::expectWhole() {
    expect(subject.damage());
    if (const QStringList left = subject.childrenLeft(); !left.isEmpty())
        expect(u"left: "_s + left.join(u"; "_s));
}

void Trial::expectWell(std::chrono::seconds limit) {
    expect(subject.answers(limit), u"does not answer"_s);
    expect(subject.quits(), u"does not quit well"_s);
    expectWhole();
}

namespace {

struct Case {
    QLatin1StringView name;
    QLatin1StringView trouble;
    void (*run)(Trial&);
};

constexpr std::array cases{
    Case{"saves"_L1, "killed while it refreshes and saves"_L1, killedWhileItSaves},
    Case{"quits"_L1, "killed while it quits"_L1, killedWhileItQuits},
    Case{"drags"_L1, "killed while a card is dragged"_L1, killedDuringADrag},
    Case{"full"_L1, "disk full from each write on"_L1, fullDisk},
    Case{"readonly"_L1, "data folder cannot be written"_L1, readOnlyFolder},
    Case{"calls"_L1, "each system call of a save fails once"_L1, failingCalls},
    Case{"fleet"_L1, "200 hosts hang, flood and die"_L1, brokenFleet},
    Case{"bus"_L1, "bus and tray killed"_L1, lostBusAndTray},
    Case{"clock"_L1, "clock set forwards and back"_L1, changedClock},
    Case{"sleep"_L1, "stopped for a minute"_L1, longSleep},
};

} // namespace

int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "minimal"); // pictures of the screen, without one
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    const auto one = std::ranges::find(cases, arguments.value(1), [](const Case& each) { return QString(each.name); });
    if (one == cases.end() || arguments.size() != 5) {
        for (const Case& each : cases)
            std::puts(each.name.data());
        return 2;
    }
    QElapsedTimer time;
    time.start();
    Trial trial(arguments[2], arguments[3], arguments[4].toInt());
    one->run(trial);
    std::printf("%-40s %7d %9d %8.0f\n", one->trouble.data(), trial.rounds, int(trial.failures.size()),
                double(time.elapsed()) / 1000);
    for (const QString& failure : trial.failures.first(qMin<qsizetype>(Trial::longestReport, trial.failures.size())))
        std::printf("    %s\n", qPrintable(failure));
    return trial.failures.isEmpty() ? 0 : 1;
}
