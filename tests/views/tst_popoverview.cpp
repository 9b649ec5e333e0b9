#include "PopoverRig.h"

#include <QAccessible>
#include <QElapsedTimer>
#include <QPointer>

using namespace Qt::StringLiterals;
using namespace tarnwick;

class PopoverViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// Also when the popover is open before a screen reader starts.
    void accessibleOnceSomebodyListens() {
        PopoverRig desk(StoreRig::fleet(u"a"));
        const auto refresh = [&desk] {
            return QAccessible::queryAccessibleInterface(desk.all(u"Refresh All Servers"_s).value(0));
        };
        QVERIFY(refresh());
        QCOMPARE(refresh()->role(), QAccessible::NoRole);
        QAccessible::setActive(true);
        QCOMPARE(refresh()->role(), QAccessible::Button);
        QVERIFY(refresh()->parent());
        QAccessible::setActive(false);
    }

    void headerAndFooter() {
        PopoverRig desk(StoreRig::fleet(u"a"));
        QCOMPARE(desk.view->width(), 400);
        desk.press(u"Refresh All Servers"_s);
        QVERIFY(desk.store->isRefreshing());
        desk.press(u"Refresh All Servers"_s); // disabled meanwhile
        QCOMPARE(desk.probed, QStringList({u"a"_s}));
        desk.probes[u"a"_s].answer(PopoverRig::metricsWith());
        QTRY_VERIFY(desk.all(u"Refresh All Servers"_s)[0]->isEnabled());
        QCOMPARE(desk.all(updatedText(desk.store->lastRefreshedAll(), QLocale::system())).size(), 1);

        desk.press(u"Web"_s);
        desk.press(u"Ko-fi"_s);
        QCOMPARE(desk.opened, QStringList({u"https://tarnwick.example"_s, u"https://ko-fi.com/tarnwick"_s}));
    }

    void sheets_data() {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QByteArray>("flag");
        QTest::addColumn<QSize>("size");
        QTest::newRow("add") << u"Add New Server"_s << QByteArray("showingAddServer") << QSize(480, 460);
        QTest::newRow("hardware") << u"Hardware Specs & Thermals"_s << QByteArray("showingMacInfoSheet")
                                  << QSize(400, 560);
        QTest::newRow("settings") << u"Settings"_s << QByteArray("showingSettings") << QSize(400, 560);
    }
    void sheets() {
        QFETCH(QString, button);
        QFETCH(QByteArray, flag);
        QFETCH(QSize, size);
        PopoverRig desk(StoreRig::fleet(u"a"));
        const auto isShown = [&] {
            return desk.ui.property(flag).toBool();
        };
        const QSize before = desk.view->size();
        const QSignalSpy close(desk.view.get(), &PopoverView::closeRequested);
        for (int time = 0; time < 2; ++time) {
            desk.press(button);
            QVERIFY(isShown());
            QTRY_COMPARE(desk.view->size(), size);
            // The keyboard stays on the sheet.
            for (int tab = 0; tab < 30; ++tab) {
                desk.key(Qt::Key_Tab);
                QVERIFY(desk.focused() != u"Refresh All Servers"_s && desk.focused() != u"Web"_s);
            }
            desk.key(Qt::Key_Escape);
            QTRY_VERIFY(!isShown());
            QTRY_COMPARE(desk.view->size(), before);
            QCOMPARE(close.count(), 0);
        }
        desk.key(Qt::Key_Escape);
        QCOMPARE(close.count(), 1);
        // The popover may be closed with its sheets open.
        desk.press(button);
        desk.ui.setShowingOnboarding(true);
        QTRY_COMPARE(desk.view->size(), QSize(540, std::max(size.height(), 510)));
        desk.view.reset();
    }

    void emptyFleet() {
        PopoverRig desk(StoreRig::fleet(u"a"));
        desk.press(u"Remove server from Tarnwick"_s);
        QVERIFY(desk.store->servers().isEmpty());
        desk.press(u"Add First Server"_s);
        QVERIFY(desk.ui.showingAddServer());
        desk.key(Qt::Key_X); // its first field has the keyboard
        QTRY_COMPARE(desk.ui.newServerName(), u"x"_s);
        desk.ui.setShowingAddServer(false);
        desk.store->setServers(StoreRig::fleet(u"b"));
        QTRY_COMPARE(desk.all(u"b"_s).size(), 1);
        QVERIFY(desk.all(u"Add First Server"_s).isEmpty());
    }

    void cardButtons() {
        QList<Server> servers = StoreRig::fleet(u"ab");
        servers[0].isLocal = true;
        servers[0].metrics = PopoverRig::metricsWith();
        PopoverRig desk(servers);
        desk.press(u"Open SSH in Terminal"_s, 1);
        QCOMPARE(desk.terminals, QStringList({u"b"_s}));
        desk.press(u"Refresh this server"_s, 1);
        QCOMPARE(desk.probed, QStringList({u"b"_s}));
        desk.probes[u"b"_s].answer(PopoverRig::metricsWith());
        QTRY_COMPARE(desk.all(u"19 ms"_s).size(), 2);
        desk.press(u"Pause monitoring"_s, 1);
        QVERIFY(!desk.store->servers()[1].isEnabled);
        QTRY_COMPARE(desk.all(u"PAUSED"_s).size(), 1);
        QCOMPARE(desk.all(u"Open SSH in Terminal"_s).size(), 1);
        desk.press(u"Resume monitoring"_s);
        QVERIFY(desk.store->servers()[1].isEnabled);
        desk.press(u"41\u00b0C"_s);
        QVERIFY(desk.ui.showingMacInfoSheet());
        desk.ui.setShowingMacInfoSheet(false);
        QTRY_COMPARE(desk.view->width(), 400);
        desk.press(u"Hardware Specs & Thermal Sensors"_s);
        QVERIFY(desk.ui.showingMacInfoSheet());
    }

    void pauseKeepsAResultThatTheCardDoesNotShowYet() {
        QList<Server> servers = StoreRig::fleet(u"a");
        PopoverRig desk(servers);
        servers[0].metrics = PopoverRig::metricsWith();
        desk.store->setServers(servers);
        QMetaObject::invokeMethod(desk.all(u"Pause monitoring"_s)[0], "clicked"); // in the same turn
        QVERIFY(!desk.store->servers()[0].isEnabled);
        QCOMPARE(desk.store->servers()[0].metrics, servers[0].metrics);
    }

    /// The tour's card is the one of a server that the store does not list.
    void actionsOfServersThatAreNotListed() {
        PopoverRig desk(StoreRig::fleet(u"a"));
        const QList<Server> listed = desk.store->servers();
        Server demo = StoreRig::server(u"demo"_s);
        demo.metrics = PopoverRig::metricsWith({PopoverRig::container(u"c"_s, u"running"_s)});
        CardActions actions(*desk.store, desk.ui, desk.collaborators, demo);
        for (const QUuid& id : {QUuid::createUuid(), demo.id}) {
            QCOMPARE(actions.menu(id).isEmpty(), id != demo.id);
            actions.togglePause(id);
            actions.remove(id);
            actions.refresh(id);
            actions.openSSH(id);
            actions.openShell(id, u"gone"_s);
            actions.openShell(id, u"c"_s);
            actions.restart(id, u"c"_s);
        }
        QCOMPARE(desk.store->servers(), listed);
        QCOMPARE(desk.probed, QStringList({u"demo"_s}));
        QCOMPARE(desk.terminals, QStringList({u"demo"_s, u"demo/c"_s}));
        QCOMPARE(desk.restarts.size(), 1);
    }

    void containers() {
        Server server = StoreRig::server(u"a"_s);
        const auto show = [&server](const QList<ContainerInfo>& containers) {
            server.metrics = PopoverRig::metricsWith(containers);
        };
        const ContainerInfo two = PopoverRig::container(u"two"_s, u"exited"_s);
        show({PopoverRig::container(u"one"_s, u"Running"_s), two});
        PopoverRig desk({server});
        desk.press(u"1 / 2 Containers"_s);
        QVERIFY(desk.ui.isExpanded(server.id));
        desk.press(u"Container is stopped"_s);
        desk.press(u"Enter container shell (docker exec)"_s);
        QCOMPARE(desk.terminals, QStringList({u"a/one"_s}));
        // New metrics change the rows in place.
        const QPointer<QQuickItem> row = desk.all(u"one"_s)[0];
        const ContainerInfo first = PopoverRig::container(u"first"_s, u"exited"_s);
        show({first, two});
        desk.store->setServers({server});
        QTRY_COMPARE(desk.all(u"first"_s), QList<QQuickItem*>{row});
        show({first, two, PopoverRig::container(u"two"_s, u"running"_s)}); // of the same id
        desk.store->setServers({server});
        QTRY_COMPARE(desk.all(u"two"_s).size(), 2);
        show({first});
        desk.store->setServers({server});
        QTRY_VERIFY(desk.all(u"two"_s).isEmpty());
        QCOMPARE(desk.all(u"first"_s), QList<QQuickItem*>{row});
        desk.press(u"0 / 1 Containers"_s);
        QTRY_VERIFY(desk.all(u"first"_s).isEmpty());
    }

    void oneRestartAtATime() {
        QList<Server> servers = StoreRig::fleet(u"ab");
        PopoverRig desk(servers);
        for (Server& server : servers) {
            server.metrics = PopoverRig::metricsWith({PopoverRig::container(server.name + u'1', u"exited"_s)});
            desk.ui.toggleExpanded(server.id);
        }
        desk.store->setServers(servers);
        const auto finish = [&desk](const QString& id, bool succeeded) {
            desk.restarts[id].addResult(succeeded);
            desk.restarts[id].finish();
        };
        const QString restart = u"Restart container"_s;
        desk.press(restart, 1);
        QCOMPARE(desk.ui.restartingContainerId(), u"b1"_s);
        QTRY_VERIFY(desk.all(restart)[1]->property("busy").toBool());
        QVERIFY(!desk.all(restart)[0]->isEnabled() && !desk.all(restart)[0]->property("busy").toBool());
        desk.press(restart, 0);
        QCOMPARE(desk.restarts.size(), 1);
        finish(u"b1"_s, false);
        QTRY_VERIFY(desk.all(restart)[0]->isEnabled());
        QVERIFY(desk.probed.isEmpty());

        // A restart outlives the view.
        desk.press(restart, 0);
        desk.view.reset();
        finish(u"a1"_s, true);
        QTRY_COMPARE(desk.probed, QStringList({u"a"_s}));
        QCOMPARE(desk.ui.restartingContainerId(), u"a1"_s); // until the refresh has ended, too
        desk.probes[u"a"_s].answer(PopoverRig::metricsWith());
        QTRY_VERIFY(!desk.ui.restartingContainerId());
    }

    void pinSubmenu() {
        QList<Server> servers = StoreRig::fleet(u"habc");
        servers[0].isLocal = true;
        PopoverRig desk(servers);
        const auto choose = [&desk](const QString& text) {
            desk.press(u"h"_s, 0, Qt::RightButton);
            desk.press(u"Pin to Menu Bar..."_s);
            desk.press(text);
            QTRY_VERIFY(desk.all(text).isEmpty());
        };
        const auto pinned = [&desk] {
            return desk.store->settings().pinnedMenuBarItems;
        };
        QVERIFY(desk.saves([&] { choose(u"\u2713 Mac SoC Average Temp"_s); }));
        choose(u"\u2713 Server Fleet Status"_s);
        QCOMPARE(pinned(), MenuBarItemSet());
        choose(u"Pin All Resources (CPU + GPU + RAM)"_s);
        QCOMPARE(pinned(), pins(PinPreset::Resources));
    }

    void drawsNothingUntouched() {
        QList<Server> servers = StoreRig::fleet(u"ab");
        servers[0].metrics = PopoverRig::metricsWith();
        servers[1].isEnabled = false;
        PopoverRig desk(servers);
        QElapsedTimer sinceFrame;
        sinceFrame.start();
        connect(desk.view.get(), &QQuickWindow::frameSwapped, this, [&] { sinceFrame.start(); });
        QTRY_VERIFY(sinceFrame.elapsed() > 400);
    }

    void aThousandCards() {
        QList<Server> servers = StoreRig::numbered(1000);
        for (Server& server : servers)
            server.metrics = PopoverRig::metricsWith();
        PopoverRig desk(servers);
        auto* list = desk.view->rootObject()->findChild<QQuickItem*>(u"serverList"_s);
        const auto cards = [&list] {
            return list->property("contentItem").value<QQuickItem*>()->childItems().size();
        };
        QVERIFY(cards() < 30);
        QMetaObject::invokeMethod(list, "positionViewAtEnd");
        QTRY_COMPARE(desk.all(u"1000"_s).size(), 1);
        QVERIFY(cards() < 30);
        // What changes above does not move what is seen.
        const QPoint before = middle(desk.all(u"1000"_s)[0]);
        servers[3].metrics->latencyMs = 7;
        desk.store->setServers(servers);
        QCoreApplication::processEvents();
        QCOMPARE(middle(desk.all(u"1000"_s)[0]), before);
    }
};

QTEST_MAIN(PopoverViewTest)
#include "tst_popoverview.moc"
