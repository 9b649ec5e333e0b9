// What is around the program breaks: its hosts, its bus, its tray, its clock.

#include "Cases.h"
#include "DesktopSession.h"
#include "Files.h"
#include "Fleet.h"
#include "Subject.h"
#include "UserHome.h"

#include <QDeadlineTimer>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <QThread>

#include <csignal>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace tarnwick {

CaseResult brokenFleet(const Trouble& trouble) {
    CaseResult result;
    Fleet fleet;
    const int third = trouble.rounds(66);
    result.expect(fleet.add(u"hangs"_s, third, HostBehaviour::hangs));
    result.expect(fleet.add(u"floods"_s, third, u"yes xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"));
    result.expect(fleet.add(u"dies"_s, third, u"printf '{\"cpu\":'; kill -9 $PPID"));
    result.expect(fleet.add(u"well"_s, 1));
    Subject subject(trouble.executable);
    result.expect(subject.store(fleet.servers(), 10), u"cannot store"_s);
    subject.start();
    for (; result.rounds < 2; ++result.rounds)
        result.expect(subject.answers(180s), u"a cycle does not end"_s);
    result.expectWell(subject, 180s);
    return result;
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

CaseResult lostBusAndTray(const Trouble& trouble) {
    CaseResult result;
    const UserHome home;
    DesktopSession desktop; // its screen and panel; the bus is ours, at an address that stays
    result.expect(home.error());
    result.expect(desktop.start(home.folder()));
    Subject subject(trouble.executable);
    const QString address = u"unix:path="_s + subject.home() + u"/bus"_s;
    Part bus(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--nopidfile"_s, u"--address="_s + address});
    QStringList variables = Fleet::displayVariables();
    variables << u"DBUS_SESSION_BUS_ADDRESS="_s + address;
    Part panel(u"env"_s, {u"DBUS_SESSION_BUS_ADDRESS="_s + address, u"xfce4-panel"_s, u"--disable-wm-check"_s});
    result.expect(subject.store(Fleet().servers(), 10), u"cannot store"_s);
    result.expect(bus.start() && panel.start(), u"no desktop"_s);
    subject.start(variables);
    for (const int rounds = trouble.rounds(60); result.rounds < rounds; ++result.rounds) {
        Part& victim = QRandomGenerator::global()->bounded(2) == 0 ? bus : panel;
        victim.kill();
        QThread::msleep(QRandomGenerator::global()->bounded(1500U));
        result.expect(subject.process().state() == QProcess::Running, u"has ended"_s);
        QFile::remove(subject.home() + u"/bus"_s);
        result.expect(victim.start(), u"no desktop"_s);
        QThread::msleep(QRandomGenerator::global()->bounded(1500U));
    }
    result.expectWell(subject);
    return result;
}

CaseResult changedClock(const Trouble& trouble) {
    CaseResult result;
    Subject subject(trouble.executable);
    const QString library = QStringLiteral("libfaketime.so.1");
    const QString folder = QFileInfo(QStandardPaths::findExecutable(u"faketime"_s)).exists()
                               ? u"/usr/lib/%1/faketime/"_s.arg(QStringLiteral(TARNWICK_ARCHITECTURE))
                               : QString();
    result.expect(QFileInfo::exists(folder + library), u"libfaketime is missing: install faketime"_s);
    const QString clock = subject.home() + u"/clock"_s;
    result.expect(writeFile(clock, "+0"), u"cannot write"_s);
    result.expect(subject.store(Fleet().servers(), 10), u"cannot store"_s);
    subject.start({u"LD_PRELOAD="_s + folder + library, u"FAKETIME_TIMESTAMP_FILE="_s + clock, u"FAKETIME_NO_CACHE=1"_s,
                   u"FAKETIME_DONT_FAKE_MONOTONIC=1"_s});
    result.expect(subject.printsLine(), u"prints nothing"_s);
    for (const char* const offset : {"+2h", "-2h", "+400d", "-9000d", "+9000d", "+0"}) {
        result.expect(writeFile(clock, offset), u"cannot write"_s);
        const QByteArray before = readFile(subject.dataFolder() + u"/servers.json"_s);
        const QDeadlineTimer deadline(30s);
        while (readFile(subject.dataFolder() + u"/servers.json"_s) == before && !deadline.hasExpired())
            QThread::msleep(50);
        result.expect(!deadline.hasExpired(), u"%1: stores no more"_s.arg(QString::fromLatin1(offset)));
        result.expect(subject.damage());
        ++result.rounds;
    }
    result.expectWell(subject);
    return result;
}

CaseResult longSleep(const Trouble& trouble) {
    CaseResult result;
    Fleet fleet;
    result.expect(fleet.start());
    Subject subject(trouble.executable);
    result.expect(subject.store(fleet.servers(), 10), u"cannot store"_s);
    subject.start();
    result.expect(subject.printsLine(), u"prints nothing"_s);
    ::kill(static_cast<pid_t>(subject.process().processId()), SIGSTOP);
    QThread::sleep(60);
    ::kill(static_cast<pid_t>(subject.process().processId()), SIGCONT);
    ++result.rounds;
    result.expectWell(subject);
    return result;
}

} // namespace tarnwick
