// The program ends without a warning, at a random moment.

#include "DesktopSession.h"
#include "Fleet.h"
#include "ScreenReader.h"
#include "Trial.h"
#include "UserHome.h"

#include <QRandomGenerator>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace tarnwick {

void killedWhileItSaves(Trial& trial) {
    Fleet fleet;
    trial.expect(fleet.start());
    trial.expect(trial.subject.store(fleet.servers()));
    trial.repeat(600, [&] {
        trial.subject.start();
        waitUpTo(800ms);
        trial.subject.killNow();
    });
}

void killedWhileItQuits(Trial& trial) {
    Fleet fleet;
    trial.expect(fleet.start());
    trial.expect(trial.subject.store(fleet.servers()));
    trial.repeat(300, [&] {
        trial.subject.start();
        trial.expect(trial.subject.printsLine(), u"prints nothing"_s);
        waitUpTo(300ms);
        trial.subject.process().terminate();
        waitUpTo(20ms);
        trial.subject.killNow();
    });
}

void killedDuringADrag(Trial& trial) {
    const UserHome home;
    DesktopSession desktop;
    trial.expect(home.error());
    trial.expect(desktop.start(home.folder()));
    const ScreenReader reader;
    QList<Server> servers;
    for (int i = 0; i < 8; ++i)
        servers << Fleet::server(u"host-%1"_s.arg(i), Fleet::closedPort);
    trial.expect(trial.subject.store(servers));
    trial.repeat(100, [&] {
        trial.subject.start(Fleet::displayVariables());
        const auto items = [&](qsizetype count) {
            return within(30s, [&] { return desktop.trayItems().size() == count; });
        };
        trial.expect(items(1) && trial.subject.startAgain(), u"no popover"_s);
        const QRect card = desktop.restingPlace(reader, u"host-0"_s);
        trial.expect(card.isValid(), u"no card to drag"_s);
        const QPoint from = card.topLeft() + QPoint(60, 24);
        static_cast<void>(desktop.moveTo(from) && desktop.xdotool(u"mousedown 1"_s));
        for (int step = 1, last = QRandomGenerator::global()->bounded(1, 12); step <= last; ++step)
            static_cast<void>(desktop.moveTo(from + QPoint(0, 25 * step)));
        if (trial.rounds % 2 == 0)
            static_cast<void>(desktop.xdotool(u"mouseup 1"_s));
        waitUpTo(30ms);
        trial.subject.killNow();
        static_cast<void>(desktop.xdotool(u"mouseup 1"_s));
        trial.expect(items(0), u"the item stays"_s);
    });
}

} // namespace tarnwick
