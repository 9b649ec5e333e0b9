// The program itself on a desktop: a real X server, a real panel that shows its status item, and real clicks.

#include "DesktopRig.h"
#include "OpenSshServer.h"

#include <QDir>
#include <QVariantMap>

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

/// Records what the desktop's notification service is told to show.
class Notifications : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    QStringList summaries;

public Q_SLOTS:
    QStringList GetCapabilities() { return {}; }
    uint Notify(const QString&, uint, const QString&, const QString& summary, const QString&, const QStringList&,
                const QVariantMap&, int) {
        summaries += summary;
        return 1;
    }
};

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
        Notifications notifications;
        QVERIFY(QDBusConnection::sessionBus().registerObject(u"/org/freedesktop/Notifications"_s, &notifications,
                                                             QDBusConnection::ExportAllSlots));
        // A terminal that writes down what it is to run.
        const QString terminal = rig.home.folder() + u"/xdg-terminal-exec"_s;
        const QString lines = rig.home.folder() + u"/lines"_s;
        QVERIFY(writeFile(terminal, "#!/bin/sh\necho \"$5\" >> " + lines.toUtf8()) &&
                QFile::setPermissions(terminal, QFile::ReadOwner | QFile::ExeOwner));
        qputenv("PATH", rig.home.folder().toUtf8() + ':' + qgetenv("PATH"));

        QProcess text;
        desktop.run(text, QStringLiteral(TARNWICK_EXECUTABLE), {u"DISPLAY="_s});
        QVERIFY(text.waitForReadyRead(DesktopSession::patience));
        rig.launch(); // takes the lead
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
        DESKTOP_COMPARE(server.standIns().dockerActions(), QStringList{u"restart 4f1c2a9b7d10"_s});
        DESKTOP_PRESS(rig, u"Enter container shell (docker exec)"_s);
        DESKTOP_COMPARE(readFile(lines).count("docker exec -it shop"), 1);
        DESKTOP_PRESS(rig, u"1 / 2 Containers"_s);
        DESKTOP_VERIFY(places(u"Restart container"_s).isEmpty());
        DESKTOP_PRESS(rig, u"Open SSH in Terminal"_s);
        DESKTOP_COMPARE(readFile(lines).count('\n'), 2);

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

        DESKTOP_PRESS(rig, u"1 / 2 Containers"_s);
        QVERIFY(server.standIns().add(u"docker"_s, "#!/bin/sh\ntouch \"$0.restarts\"\nexec sleep 60\n"));
        DESKTOP_PRESS(rig, u"Restart container"_s); // it lasts until the program ends
        DESKTOP_VERIFY(QFile::exists(server.standIns().folder() + u"/docker.restarts"_s));

        server.stop();
        DESKTOP_PRESS(rig, u"Refresh All Servers"_s);
        DESKTOP_COMPARE(notifications.summaries.size(), 4);
        QCOMPARE(notifications.summaries.last(), u"and 1 more server needs attention"_s);
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
        QVERIFY(QFile::remove(rig.path(u"servers.json"_s)));
        DESKTOP_COMPARE(rig.names(), order); // the one without a display has followed, and leads again
        text.terminate();
        expectGoodEnd(text);
    }
};

QTEST_GUILESS_MAIN(DesktopTest)
#include "tst_desktop.moc"
