// The program ends without a warning, at a random moment.

#include "Cases.h"
#include "DesktopSession.h"
#include "Fleet.h"
#include "ScreenReader.h"
#include "Subject.h"
#include "UserHome.h"

#include <QDBusConnection>
#include <QRandomGenerator>
#include <QThread>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace tarnwick {

namespace {

void waitUpTo(int milliseconds) {
    QThread::usleep(QRandomGenerator::global()->bounded(1000U * static_cast<unsigned>(milliseconds)));
}

} // namespace

CaseResult killedWhileItSaves(const Trouble& trouble) {
    CaseResult result;
    Fleet fleet;
    result.expect(fleet.start());
    Subject subject(trouble.executable);
    result.expect(subject.store(fleet.servers(), 10), u"cannot store"_s);
    for (const int rounds = trouble.rounds(600); result.rounds < rounds; ++result.rounds) {
        subject.start();
        waitUpTo(800);
        subject.killNow();
        result.expectWhole(subject);
    }
    subject.start();
    result.expectWell(subject);
    return result;
}

CaseResult killedWhileItQuits(const Trouble& trouble) {
    CaseResult result;
    Fleet fleet;
    result.expect(fleet.start());
    Subject subject(trouble.executable);
    result.expect(subject.store(fleet.servers(), 10), u"cannot store"_s);
    for (const int rounds = trouble.rounds(300); result.rounds < rounds; ++result.rounds) {
        subject.start();
        result.expect(subject.printsLine(), u"prints nothing"_s);
        waitUpTo(300);
        subject.process().terminate();
        waitUpTo(20);
        subject.killNow();
        result.expectWhole(subject);
    }
    subject.start();
    result.expectWell(subject);
    return result;
}

CaseResult killedDuringADrag(const Trouble& trouble) {
    CaseResult result;
    const UserHome home;
    DesktopSession desktop;
    result.expect(home.error());
    result.expect(desktop.start(home.folder()));
    const ScreenReader reader;
    Subject subject(trouble.executable);
    QList<Server> servers;
    for (int i = 0; i < 8; ++i)
        servers << Fleet::server(u"host-%1"_s.arg(i), 9);
    result.expect(subject.store(servers, 3600), u"cannot store"_s);
    for (const int rounds = trouble.rounds(100); result.failures.isEmpty() && result.rounds < rounds; ++result.rounds) {
        subject.start(Fleet::displayVariables());
        const bool isOpen = subject.startAgain();
        const QRect card = isOpen ? desktop.restingPlace(reader, u"host-0"_s) : QRect();
        result.expect(card.isValid(), u"no card to drag"_s);
        const QPoint from = card.topLeft() + QPoint(60, 24);
        static_cast<void>(desktop.moveTo(from) && desktop.xdotool(u"mousedown 1"_s));
        for (int step = 1, last = QRandomGenerator::global()->bounded(1, 12); step <= last; ++step)
            static_cast<void>(desktop.moveTo(from + QPoint(0, 25 * step)));
        if (result.rounds % 2 == 0)
            static_cast<void>(desktop.xdotool(u"mouseup 1"_s));
        waitUpTo(30);
        subject.killNow();
        static_cast<void>(desktop.xdotool(u"mouseup 1"_s));
        result.expectWhole(subject);
    }
    return result;
}

} // namespace tarnwick
