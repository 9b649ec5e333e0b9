// What is around the program breaks: its hosts, its bus, its tray, its clock.

#include "DesktopSession.h"
#include "Files.h"
#include "Fleet.h"
#include "Trial.h"
#include "UserHome.h"

#include <QRandomGenerator>

#include <csignal>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace tarnwick {

void brokenFleet(Trial& trial) {
    Fleet fleet;
    const int third = trial.part(66);
    trial.expect(fleet.add(u"hangs"_s, third, HostBehaviour::hangs));
    trial.expect(fleet.add(u"floods"_s, third, u"yes xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"));
    trial.expect(fleet.add(u"dies"_s, third, u"printf '{\"cpu\":'; kill -9 $PPID"));
    trial.expect(fleet.add(u"well"_s, 1));
    trial.expect(trial.subject.store(fleet.servers()));
    trial.subject.start();
    for (; trial.rounds < 2; ++trial.rounds)
        trial.expect(trial.subject.answers(180s), u"a cycle does not end"_s);
    trial.expectWell(180s);
}

namespace {

/// A part of a desktop that is started again after it was killed.
class Part {
public:
    Part(QString program, QStringList arguments) : program_(std::move(program)), arguments_(std::move(arguments)) {}
    ~Part() { kill(); }
    [[nodiscard]] bool start() {
        process_.setStandardErrorFile(QProcess::nullDevice());
        process_.start(program_, arguments_);
        return process_.waitForStarted();
    }
    void kill() {
        process_.kill();
        process_.waitForFinished();
    }

private:
    QString program_;
    QStringList arguments_;
    QProcess process_;
};

} // namespace

void lostBusAndTray(Trial& trial) {
    const UserHome home;
    DesktopSession desktop; // its screen and panel; the bus is ours, at an address that stays
    trial.expect(home.error());
    trial.expect(desktop.start(home.folder()));
    Subject& subject = trial.subject;
    const QString address = u"unix:path="_s + subject.home() + u"/bus"_s;
    Part bus(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--nopidfile"_s, u"--address="_s + address});
    Part panel(u"env"_s, {u"DBUS_SESSION_BUS_ADDRESS="_s + address, u"xfce4-panel"_s, u"--disable-wm-check"_s});
    trial.expect(subject.store(Fleet().servers()));
    trial.expect(bus.start() && panel.start(), u"no desktop"_s);
    subject.start(Fleet::displayVariables() << u"DBUS_SESSION_BUS_ADDRESS="_s + address);
    for (const int rounds = trial.part(60); trial.rounds < rounds; ++trial.rounds) {
        Part& victim = QRandomGenerator::global()->bounded(2) == 0 ? bus : panel;
        victim.kill();
        waitUpTo(1500ms);
        trial.expect(subject.process().state() == QProcess::Running, u"has ended"_s);
        QFile::remove(subject.home() + u"/bus"_s);
        trial.expect(victim.start(), u"no desktop"_s);
        waitUpTo(1500ms);
    }
    trial.expectWell();
}

void changedClock(Trial& trial) {
    const Subject& subject = trial.subject;
    const QString library = u"/usr/lib/%1/faketime/libfaketime.so.1"_s.arg(QStringLiteral(TARNWICK_ARCHITECTURE));
    trial.expect(QFileInfo::exists(library), u"libfaketime is missing: install faketime"_s);
    const QString clock = subject.home() + u"/clock"_s;
    trial.expect(writeFile(clock, "+0"), u"cannot write"_s);
    trial.expect(subject.store(Fleet().servers()));
    trial.subject.start({u"LD_PRELOAD="_s + library, u"FAKETIME_TIMESTAMP_FILE="_s + clock, u"FAKETIME_NO_CACHE=1"_s,
                         u"FAKETIME_DONT_FAKE_MONOTONIC=1"_s});
    trial.expect(trial.subject.printsLine(), u"prints nothing"_s);
    const auto stored = [&subject] {
        return readFile(subject.dataFolder() + u"/servers.json"_s);
    };
    for (const char* const offset : {"+2h", "-2h", "+400d", "-9000d", "+9000d", "+0"}) {
        trial.expect(writeFile(clock, offset), u"cannot write"_s);
        const bool stores = within(30s, [&, before = stored()] { return stored() != before; });
        trial.expect(stores, u"%1: stores no more"_s.arg(QString::fromLatin1(offset)));
        trial.expect(subject.damage());
        ++trial.rounds;
    }
    trial.expectWell();
}

void longSleep(Trial& trial) {
    Fleet fleet;
    trial.expect(fleet.start());
    trial.expect(trial.subject.store(fleet.servers()));
    trial.subject.start();
    trial.expect(trial.subject.printsLine(), u"prints nothing"_s);
    const auto process = static_cast<pid_t>(trial.subject.process().processId());
    ::kill(process, SIGSTOP);
    QThread::sleep(60);
    ::kill(process, SIGCONT);
    ++trial.rounds;
    trial.expectWell();
}

} // namespace tarnwick
