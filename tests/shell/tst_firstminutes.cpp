// A new user's first five minutes with the program itself: on a real X server, with real clicks and keys, and servers
// that a real OpenSSH server answers for.

#include "DesktopRig.h"
#include "OpenSshServer.h"

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {
/// Another address of this computer. Under its usual name the server would be taken for this computer itself.
const QString byHandHost = u"127.1"_s;
const QString importedHost = u"127.0.1"_s;
} // namespace

class FirstMinutesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        rig_.start();
        QVERIFY(server_.standIns().addDocker("4f1c2a9b7d10\tshop\tshop:2\tUp 12 days\trunning\t\n"));
        QCOMPARE(server_.start(), QString());
    }

    void fromTheTourToTheSecondLaunch() {
        rig_.launch();
        takeTheTour();
        DESKTOP_COMPARE(rig_.desktop.windows().size(), 1); // the popover instead of the tour
        for (const auto step :
             {&FirstMinutesTest::addByHand, &FirstMinutesTest::importAnother, &FirstMinutesTest::setUp}) {
            (this->*step)();
            if (QTest::currentTestFailed())
                return;
        }

        const QList<Server> servers = rig_.servers();
        QCOMPARE(servers.size(), 3); // and this computer
        QVERIFY(servers[0].isLocal);
        for (const auto& [index, name, host] :
             {std::tuple{1, u"by-hand"_s, byHandHost}, {2, u"imported"_s, importedHost}}) {
            const Server& server = servers[index];
            QCOMPARE(server.name, name);
            QCOMPARE(server.host, host);
            QCOMPARE(server.port, server_.port());
            QCOMPARE(server.user, server_.user());
            QCOMPARE(server.customSshKeyPath, server_.keyPath());
            QVERIFY(server.isEnabled && server.dockerEnabled && !server.isLocal);
            QVERIFY(server.metrics && !server.metrics->errorMessage && server.metrics->memoryTotalMB > 0);
        }
        const AppSettings settings = rig_.settings();
        AppSettings expected;
        expected.hasCompletedOnboarding = true;
        expected.refreshIntervalSeconds = 65;
        expected.alertDiskThresholdPercent = 84;
        expected.pinnedMenuBarItems = pins(PinPreset::All);
        expected.firstLaunchDate = settings.firstLaunchDate;
        QCOMPARE(settings, expected);

        comeBack();
        QCOMPARE(rig_.names(), (QStringList{servers[0].name, u"by-hand"_s, u"imported"_s}));
        QCOMPARE(rig_.settings(), expected);
    }

private:
    void takeTheTour() {
        for (const auto& [step, button] : {std::pair{u"Step 1 of 5 • Introduction"_s, u"Explore Features"_s},
                                           {u"Step 2 of 5 • Server & Docker Fleets"_s, u"Next"_s},
                                           {u"Step 3 of 5 • Telemetry"_s, u"Next"_s},
                                           {u"Step 4 of 5 • Panel Customization"_s, u"Next"_s},
                                           {u"Step 5 of 5 • You're All Set!"_s, u"Start Using Tarnwick"_s}}) {
            DESKTOP_COMPARE(rig_.reader->description(u"Tarnwick Tour"_s), step);
            DESKTOP_PRESS(rig_, button);
        }
        DESKTOP_VERIFY(!shows(u"Tarnwick Tour"_s));
    }

    void addByHand() {
        DESKTOP_PRESS(rig_, u"Add New Server"_s);
        for (const auto& [field, text] : {std::pair{u"Server Name"_s, u"by-hand"_s},
                                          {u"Hostname or IP Address"_s, byHandHost},
                                          {u"SSH Port"_s, QString::number(server_.port())},
                                          {u"SSH User"_s, server_.user()},
                                          {u"SSH Key Path (Optional)"_s, server_.keyPath()}})
            QVERIFY2(fill(field, text), qPrintable(field));
        DESKTOP_PRESS(rig_, u"Save Server"_s);
        DESKTOP_VERIFY(shows(u"1 / 1 Containers"_s));
    }

    void importAnother() {
        const QString host = u"Host imported\nHostName %1\nUser %2\nPort %3\nIdentityFile %4\n"_s.arg(
            importedHost, server_.user(), QString::number(server_.port()), server_.keyPath());
        QVERIFY(rig_.home.writeSshFile(u"config"_s, host.toUtf8()));
        for (const auto& button : {u"Add New Server"_s, u"Import from ~/.ssh/config (1)"_s, u"Import"_s})
            DESKTOP_PRESS(rig_, button);
        DESKTOP_VERIFY(shows(u"Added"_s));
        DESKTOP_PRESS(rig_, u"Close"_s);
        DESKTOP_VERIFY(rig_.servers().value(2).metrics.has_value());
    }

    void setUp() {
        // The sliders in the middle of their ranges.
        for (const auto& name : {u"Settings"_s, u"All"_s, u"Refresh Interval:"_s, u"Disk Full Alert Threshold:"_s})
            DESKTOP_PRESS(rig_, name);
        QVERIFY(rig_.desktop.xdotool(u"click --repeat 10 5"_s)); // the wheel, downwards
        DESKTOP_PRESS(rig_, u"Replay Welcome Tour & Demo..."_s);
        takeTheTour();
        DESKTOP_PRESS(rig_, u"Quit Tarnwick"_s);
        rig_.expectEnd();
    }

    void comeBack() {
        rig_.launch();
        DESKTOP_COMPARE(rig_.desktop.label().count(u'•'), 6);
        QCOMPARE(rig_.desktop.windows(), QByteArrayList());
        QVERIFY(rig_.desktop.click(DesktopSession::itemPlace.center()));
        DESKTOP_VERIFY(shows(u"by-hand"_s) && shows(u"imported"_s) && shows(u"1 / 1 Containers"_s));
        DESKTOP_PRESS(rig_, u"Settings"_s);
        DESKTOP_COMPARE(rig_.reader->description(u"Refresh Interval:"_s), u"65 seconds"_s);
        QCOMPARE(rig_.reader->description(u"Disk Full Alert Threshold:"_s), u"84%"_s);
        rig_.program.terminate();
        rig_.expectEnd();
    }

    [[nodiscard]] bool shows(const QString& name) const { return !rig_.reader->places(name).isEmpty(); }
    /// Replaces the text of a field.
    [[nodiscard]] bool fill(const QString& field, const QString& text) const {
        return rig_.desktop.press(*rig_.reader, field) && rig_.desktop.xdotool(u"key ctrl+a"_s) &&
               rig_.desktop.xdotool(u"type "_s + text);
    }

    DesktopRig rig_;
    OpenSshServer server_;
};

QTEST_GUILESS_MAIN(FirstMinutesTest)
#include "tst_firstminutes.moc"
