// The program itself on a desktop: a real X server, a real panel that shows its status item, and real clicks.

#include "DesktopRig.h"
#include "OpenSshServer.h"

#include <QDir>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

/// Four entries for one server, and a tour that is completed.
bool writeFleet(const DesktopRig& rig, const OpenSshServer& server) {
    QList<Server> servers;
    for (const QString& name : {u"web"_s, u"db"_s, u"mail"_s, u"build"_s}) {
        Server entry;
        entry.id = QUuid::createUuid();
        entry.name = name;
        entry.host = server.address();
        entry.user = server.user();
        entry.port = server.port();
        entry.customSshKeyPath = server.keyPath();
        servers += entry;
    }
    AppSettings settings;
    settings.hasCompletedOnboarding = true;
    return writeFile(rig.path(u"settings.json"_s), encodeSettings(settings).value()) &&
           writeFile(rig.path(u"servers.json"_s), encodeServers(servers).value()) &&
           rig.home.writeSshFile(u"known_hosts"_s, server.knownHostsLine());
}

} // namespace

class DesktopTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    static void aFleetIsUsedFromTheTray() {
        DesktopRig rig;
        rig.start();
        const DesktopSession& desktop = rig.desktop;
        OpenSshServer server;
        QVERIFY(server.standIns().addDocker(
            "4f1c2a9b7d10\tshop\tregistry.example/shop:2\tUp 12 days\trunning\t0.0.0.0:80->80/tcp\n"
            "9a7d3310cc02\told-shop\tregistry.example/shop:1\tExited (0) 3 weeks ago\texited\t\n"));
        QCOMPARE(server.start(), QString());
        QVERIFY(writeFleet(rig, server));

        rig.launch();
        QCOMPARE(desktop.windows(), QByteArrayList());
        QVERIFY(desktop.click(DesktopSession::itemPlace.center()));
        DESKTOP_COMPARE(desktop.windows().size(), 1);
        const auto places = [&rig](const QString& name) {
            return rig.reader->places(name);
        };
        DESKTOP_VERIFY(std::ranges::all_of(
            rig.servers(), [](const Server& entry) { return entry.metrics && entry.metrics->containers.size() == 2; }));
        DESKTOP_VERIFY(!rig.isOfOneColor(places(u"web"_s).value(0)));

        DESKTOP_PRESS(rig, u"1 / 2 Containers"_s);
        DESKTOP_PRESS(rig, u"Restart container"_s);
        DESKTOP_COMPARE(server.standIns().restarts(), QStringList{u"4f1c2a9b7d10"_s});
        DESKTOP_PRESS(rig, u"1 / 2 Containers"_s);
        DESKTOP_VERIFY(places(u"Restart container"_s).isEmpty());

        // Recognises cards by their names, which are at the same place in every card.
        const QRect first = desktop.restingPlace(*rig.reader, u"web"_s);
        const QPoint head = QPoint(60, 24);
        QVERIFY(desktop.moveTo(desktop.restingPlace(*rig.reader, u"mail"_s).topLeft() + head) &&
                desktop.xdotool(u"mousedown 1"_s));
        QVERIFY(desktop.moveTo(first.topLeft() + head + QPoint(0, 40)) && desktop.moveTo(first.topLeft() + head));
        DESKTOP_VERIFY(places(u"mail"_s).value(0).top() < places(u"web"_s).value(0).top());
        QVERIFY(desktop.xdotool(u"mouseup 1"_s));
        const QStringList order{u"mail"_s, u"web"_s, u"db"_s, u"build"_s};
        DESKTOP_COMPARE(rig.names(), order);

        QVERIFY(desktop.click({300, 800}));
        DESKTOP_COMPARE(desktop.windows(), QByteArrayList());
        QProcess second;
        desktop.run(second, QStringLiteral(TARNWICK_EXECUTABLE));
        expectGoodEnd(second);
        DESKTOP_COMPARE(desktop.windows().size(), 1);
        DESKTOP_COMPARE(places(u"mail"_s).size(), 1);
        QVERIFY(desktop.xdotool(u"key Escape"_s));
        DESKTOP_COMPARE(desktop.windows(), QByteArrayList());

        rig.program.terminate();
        rig.expectEnd();
        QCOMPARE(rig.names(), order);
    }
};

QTEST_GUILESS_MAIN(DesktopTest)
#include "tst_desktop.moc"
