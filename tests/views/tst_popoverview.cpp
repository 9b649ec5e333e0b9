#include "ViewRig.h"
#include "controls/TabularText.h"

#include <QAccessible>
#include <QElapsedTimer>
#include <QFontMetricsF>
#include <QPointer>
#include <QStyleHints>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace tarnwick;

namespace {

ContainerInfo container(const QString& id, const QString& state) {
    return {id, id, u"image"_s, u"Up 2 days"_s, state, {}};
}

ServerMetrics metricsWith(const QList<ContainerInfo>& containers = {}) {
    ServerMetrics metrics;
    metrics.latencyMs = 19;
    metrics.containers = containers;
    return metrics;
}

} // namespace

class PopoverViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// Also when the popover is open before a screen reader starts.
    void accessibleOnceSomebodyListens() {
        PopoverRig desk(StoreRig::fleet(u"a"));
        const auto refresh = [&desk] {
            return QAccessible::queryAccessibleInterface(desk.item(u"Refresh All Servers"_s));
        };
        QVERIFY(refresh());
        QCOMPARE(refresh()->role(), QAccessible::NoRole);
        QAccessible::setActive(true);
        QCOMPARE(refresh()->role(), QAccessible::Button);
        QVERIFY(refresh()->parent());
        QAccessible::setActive(false);
    }

    void refreshesAllOnce() {
        PopoverRig desk(StoreRig::fleet(u"a"));
        QCOMPARE(desk.view->width(), 400);
        desk.click(u"Refresh All Servers"_s);
        QVERIFY(desk.store->isRefreshing());
        desk.click(u"Refresh All Servers"_s); // disabled meanwhile
        QTest::mouseMove(desk.view.get(), {1, 1});
        QTest::mouseMove(desk.view.get(), middle(desk.item(u"Refresh All Servers"_s)));
        QTRY_VERIFY(desk.items(u"Refresh All Servers"_s).size() > 1); // its help text
        QCOMPARE(desk.probed, QStringList({u"a"_s}));
        desk.probes[u"a"_s].answer(metricsWith());
        QTRY_VERIFY(desk.item(u"Refresh All Servers"_s)->isEnabled());
        QVERIFY(desk.item(updatedText(desk.store->lastRefreshedAll(), QLocale::system())));
    }

    void saysThatARefreshIsSlow() {
        PopoverRig desk(StoreRig::fleet(u"a"));
        const int height = desk.view->height();
        desk.click(u"Refresh All Servers"_s);
        desk.steadyTime += 64s;
        desk.probes[u"a"_s].answer(ServerMetrics());
        const QString words = slowText(64s, 30s, false);
        QTRY_VERIFY(desk.item(words));
        QTRY_VERIFY(desk.view->height() > height);
        desk.store->editSettings([](AppSettings& settings) { settings.refreshIntervalSeconds = 65; });
        QTRY_VERIFY(!desk.item(words));
    }

    void helpUnderThePointer() {
        QGuiApplication::styleHints()->setUseHoverEffects(true); // as on a desktop
        Server server = StoreRig::server(u"a"_s);
        server.isLocal = true;
        server.metrics = metricsWith({container(u"c"_s, u"running"_s)});
        PopoverRig desk({server});
        desk.click(u"1 / 1 Containers"_s);
        QTRY_VERIFY(desk.item(u"Restart container"_s));
        const auto isShown = [&desk](const QString& text) {
            return std::ranges::any_of(desk.items(text), [](const QQuickItem* item) {
                while (item && !item->inherits("QQuickOverlay"))
                    item = item->parentItem();
                return item != nullptr;
            });
        };
        QStringList helps;
        QList<QQuickItem*> items{desk.view->rootObject()};
        for (qsizetype i = 0; i < items.size(); ++i) {
            items += items[i]->childItems();
            const QQuickItem* const tip = items[i];
            const QString help = tip->property("text").toString();
            if (!tip->property("wanted").isValid() || !tip->isVisible() || help.isEmpty())
                continue;
            helps += help;
            for (const int x : {0, 1})
                QTest::mouseMove(desk.view.get(), middle(tip->parentItem()) + QPoint(x, 0));
            QTRY_VERIFY2(isShown(help), qPrintable(help));
        }
        QCOMPARE(helps.size(), 14);
    }

    void sizesOnACard() {
        QList<Server> servers = StoreRig::fleet(u"ab");
        const QString error = u"long error "_s.repeated(20).trimmed();
        servers[0].metrics = ServerMetrics::offline(error);
        servers[1].metrics = metricsWith();
        servers[1].metrics->cpuPercent = 25;
        PopoverRig desk(servers);
        QCOMPARE(desk.item(error)->property("lineCount").toInt(), 2);
        const QQuickItem* const track = desk.item(u"CPU"_s)->parentItem()->childItems().last();
        QCOMPARE(track->childItems().first()->width(), track->width() / 4);
    }

    void saysThatThisComputerIsOffline() {
        PopoverRig desk(StoreRig::fleet(u"a"));
        const QString words = u"This computer is offline"_s;
        desk.hasDefaultRoute = false;
        for (const bool fails : {true, false}) {
            QCOMPARE(desk.item(words) != nullptr, !fails);
            if (fails)
                desk.click(u"Refresh All Servers"_s);
            else
                desk.store->refreshServer(desk.store->servers().first());
            desk.probes[u"a"_s].answer(fails ? ServerMetrics::offline(u"no route"_s) : metricsWith());
            QTRY_COMPARE(desk.item(words) != nullptr, fails);
        }
    }

    void sheets() {
        const std::tuple<QString, const char*, QSize> rows[] = {
            {u"Add New Server"_s, "showingAddServer", {480, 460}},
            {u"Hardware Specs & Thermals"_s, "showingMacInfoSheet", {400, 560}},
            {u"Settings"_s, "showingSettings", {400, 560}},
        };
        for (const auto& [button, flag, size] : rows) {
            PopoverRig desk(StoreRig::fleet(u"a"));
            const QSize before = desk.view->size();
            for (int time = 0; time < 2; ++time) {
                desk.item(button)->forceActiveFocus();
                desk.press(Qt::Key_Space);
                QVERIFY(desk.ui.property(flag).toBool());
                QTRY_COMPARE(desk.view->size(), size);
                // The page is out of sight, and as it was.
                QVERIFY(!desk.item(u"serverList"_s));
                QCOMPARE(desk.view->rootObject()->findChild<QQuickItem*>(u"serverList"_s)->width(), 400 - 2 * 12);
                // The keyboard stays on the sheet.
                for (int tab = 0; tab < 30; ++tab) {
                    desk.press(Qt::Key_Tab);
                    QVERIFY(desk.view->activeFocusItem()->isVisible());
                }
                desk.press(Qt::Key_Escape);
                QTRY_VERIFY(!desk.ui.property(flag).toBool());
                QTRY_COMPARE(desk.view->size(), before);
                QTRY_COMPARE(desk.view->activeFocusItem(), desk.item(button));
                QCOMPARE(desk.closings(), 0);
            }
            desk.press(Qt::Key_Escape);
            QCOMPARE(desk.closings(), 1);
            // The popover may be closed with its sheets open.
            desk.click(button);
            desk.ui.setShowingOnboarding(true);
            QTRY_COMPARE(desk.view->size(), QSize(540, 510));
        }
    }

    void keepsToALowScreen() {
        PopoverRig desk(StoreRig::fleet(u"a,b,c,d,e,f"));
        desk.view->setMaximumHeight(300);
        for (const char* flag :
             {"", "showingAddServer", "showingMacInfoSheet", "showingSettings", "showingOnboarding"}) {
            desk.ui.setProperty(flag, true);
            QTRY_COMPARE(desk.view->rootObject()->height(), 300);
        }
        const QQuickItem* const next = desk.item(u"next"_s);
        QCOMPARE_LT(next->mapToScene({0, next->height()}).y(), 300); // the end of what is shown is still shown
    }

    void emptyFleet() {
        PopoverRig desk(StoreRig::fleet(u"a"));
        desk.click(u"Remove server from Tarnwick"_s);
        QVERIFY(desk.store->servers().isEmpty());
        QTRY_VERIFY(desk.view->rootObject()->property("popover").value<PopoverModel*>()->content().isEmpty);
        QVERIFY(!desk.item(u"Add First Server"_s) && desk.item(u"serverList"_s)); // the card is on its way out
        desk.click(u"Add First Server"_s);
        QVERIFY(desk.ui.showingAddServer());
        desk.press(Qt::Key_X); // its first field has the keyboard
        QTRY_COMPARE(desk.ui.newServerName(), u"x"_s);
        desk.ui.setShowingAddServer(false);
        desk.store->setServers(StoreRig::fleet(u"b"));
        QTRY_VERIFY(desk.item(u"b"_s) && !desk.item(u"Add First Server"_s));
    }

    void cardButtons() {
        QList<Server> servers = StoreRig::fleet(u"ab");
        servers[0].isLocal = true;
        servers[0].metrics = metricsWith();
        PopoverRig desk(servers);
        desk.click(u"Open SSH in Terminal"_s, 1);
        QCOMPARE(desk.terminals, QStringList({u"b"_s}));
        desk.click(u"Refresh this server"_s, 1);
        QCOMPARE(desk.probed, QStringList({u"b!"_s}));
        desk.probes[u"b"_s].answer(metricsWith());
        QTRY_COMPARE(desk.items(u"19 ms"_s).size(), 2);
        desk.click(u"Pause monitoring"_s, 1);
        QVERIFY(!desk.store->servers()[1].isEnabled);
        QTRY_VERIFY(desk.item(u"PAUSED"_s));
        QCOMPARE(desk.items(u"Open SSH in Terminal"_s).size(), 1);
        desk.click(u"Resume monitoring"_s);
        QVERIFY(desk.store->servers()[1].isEnabled);
        for (const QString& button : {u"41\u00b0C"_s, u"Hardware Specs & Thermal Sensors"_s}) {
            desk.click(button);
            QVERIFY(desk.ui.showingMacInfoSheet());
            desk.ui.setShowingMacInfoSheet(false);
            QTRY_COMPARE(desk.view->width(), 400);
        }
    }

    void pauseKeepsAResultThatTheCardDoesNotShowYet() {
        QList<Server> servers = StoreRig::fleet(u"a");
        PopoverRig desk(servers);
        servers[0].metrics = metricsWith();
        desk.store->setServers(servers);
        QMetaObject::invokeMethod(desk.item(u"Pause monitoring"_s), "clicked"); // in the same turn
        QVERIFY(!desk.store->servers()[0].isEnabled);
        QCOMPARE(desk.store->servers()[0].metrics, servers[0].metrics);
    }

    /// The tour's card is the one of a server that the store does not list.
    void actionsOfServersThatAreNotListed() {
        ViewRig desk(StoreRig::fleet(u"a"));
        const QList<Server> listed = desk.store->servers();
        Server demo = StoreRig::server(u"demo"_s);
        demo.metrics = metricsWith({container(u"c"_s, u"running"_s)});
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
        QCOMPARE(desk.probed, QStringList({u"demo!"_s}));
        QCOMPARE(desk.terminals, QStringList({u"demo"_s, u"demo/c"_s}));
        QCOMPARE(desk.actions.size(), 1);
    }

    void containers() {
        Server server = StoreRig::server(u"a"_s);
        server.metrics = metricsWith({container(u"one"_s, u"Running"_s), container(u"two"_s, u"exited"_s)});
        PopoverRig desk({server});
        desk.click(u"1 / 2 Containers"_s);
        QVERIFY(desk.ui.isExpanded(server.id));
        desk.click(u"Container is stopped"_s);
        desk.click(u"Enter container shell (docker exec)"_s);
        QCOMPARE(desk.terminals, QStringList({u"a/one"_s}));
        // New metrics change the rows in place, also those of one id.
        const QPointer<QQuickItem> row = desk.item(u"one"_s);
        for (const int count : {3, 1}) {
            server.metrics = metricsWith(QList<ContainerInfo>(count, container(u"same"_s, u"exited"_s)));
            desk.store->setServers({server});
            QTRY_COMPARE(desk.items(u"same"_s).size(), count);
            QVERIFY(desk.items(u"same"_s).contains(row.data()));
        }
        desk.click(u"0 / 1 Containers"_s);
        QTRY_VERIFY(!desk.item(u"same"_s));
    }

    void rowsOfManyContainersExistWhereTheyAreSeen() {
        QList<Server> servers = StoreRig::fleet(u"ab");
        QList<ContainerInfo> containers;
        for (int number = 0; number < 300; ++number)
            containers += container(u"c%1"_s.arg(number), u"exited"_s);
        servers[0].metrics = metricsWith(containers);
        PopoverRig desk(servers);
        desk.ui.setExpandedServers({servers[0].id});
        const QString restart = u"Restart container"_s;
        QTRY_VERIFY(desk.item(u"c5"_s));
        QVERIFY2(desk.items(restart).size() < 40, qPrintable(QString::number(desk.items(restart).size())));
        auto* const list = desk.view->rootObject()->findChild<QQuickItem*>(u"serverList"_s);
        QTRY_VERIFY(list->property("contentHeight").toReal() > 300 * 44); // it has unfolded
        list->setProperty("contentY", list->property("contentY").toReal() + 150 * 44);
        QTRY_VERIFY(desk.item(u"c150"_s));
        QVERIFY(!desk.item(u"c0"_s) && desk.items(restart).size() < 40);
        QTRY_COMPARE(qRound(desk.item(u"c150"_s)->mapToItem(desk.item(u"c151"_s), QPointF()).y()), -44);
        const auto sees = [&](const QString& name) {
            list->setProperty("contentY", list->property("contentY").toReal() + 200);
            return desk.item(name) != nullptr;
        };
        QTRY_VERIFY(sees(u"c299"_s) && desk.item(u"b"_s));
        QTRY_VERIFY(desk.item(u"c299"_s)->mapToScene({}).y() + 38 < desk.item(u"b"_s)->mapToScene({}).y());
    }

    void oneRestartAtATime() {
        QList<Server> servers = StoreRig::fleet(u"ab");
        for (Server& server : servers)
            server.metrics = metricsWith({container(server.name + u'1', u"exited"_s)});
        PopoverRig desk(servers);
        desk.ui.setExpandedServers({servers[0].id, servers[1].id});
        const auto finish = [&desk](const QString& id, const std::optional<QString>& failure) {
            desk.actions[u"restart "_s + id].addResult(failure);
            desk.actions[u"restart "_s + id].finish();
        };
        const QString restart = u"Restart container"_s;
        const auto button = [&](int which) {
            return desk.items(restart)[which];
        };
        desk.click(restart, 1);
        QCOMPARE(desk.ui.restartingContainerId(), u"b1"_s);
        QTRY_VERIFY(button(1)->property("busy").toBool());
        QVERIFY(!button(0)->isEnabled() && !button(0)->property("busy").toBool());
        desk.click(restart, 0);
        QCOMPARE(desk.actions.size(), 1);
        finish(u"b1"_s, u"no"_s);
        QTRY_VERIFY(button(0)->isEnabled());
        desk.click(restart, 1);
        desk.actions.clear(); // cancelled
        QTRY_VERIFY(button(0)->isEnabled());
        QVERIFY(desk.probed.isEmpty());

        // A restart outlives the view.
        desk.click(restart, 0);
        desk.view.reset();
        finish(u"a1"_s, {});
        QTRY_COMPARE(desk.probed, QStringList({u"a!"_s}));
        QCOMPARE(desk.ui.restartingContainerId(), u"a1"_s); // until the refresh has ended, too
        desk.probes[u"a"_s].answer(metricsWith());
        QTRY_VERIFY(!desk.ui.restartingContainerId());
    }

    void containerMenu() {
        Server server = StoreRig::server(u"a"_s);
        server.metrics = metricsWith({container(u"c"_s, u"running"_s), container(u"d"_s, u"exited"_s)});
        PopoverRig desk({server});
        desk.ui.setExpandedServers({server.id});
        const auto* const list = desk.view->rootObject()->findChild<QQuickItem*>(u"serverList"_s);
        QTRY_VERIFY(list->property("contentHeight").toReal() > 268); // it has unfolded
        const auto choose = [&desk](const QString& row, const QString& line) {
            QTRY_VERIFY(desk.item(row));
            desk.click(row, 0, Qt::RightButton);
            QTRY_VERIFY(desk.item(line));
            QVERIFY(!desk.item(u"Delete Server"_s)); // the card has another menu
            desk.click(line);
            QTRY_VERIFY(!desk.item(u"Show Last 200 Log Lines"_s));
        };
        choose(u"c"_s, u"Show Last 200 Log Lines"_s);
        desk.click(u"d"_s, 0, Qt::RightButton);
        QTRY_VERIFY(desk.item(u"Enter Shell"_s));
        desk.click(u"Enter Shell"_s); // disabled: it does not run
        desk.press(Qt::Key_Escape);
        QTRY_VERIFY(!desk.item(u"Enter Shell"_s));
        QCOMPARE(desk.terminals, QStringList{u"a/c log"_s});

        choose(u"d"_s, u"Start"_s);
        QCOMPARE(desk.actions.size(), 1);
        desk.actions[u"start d"_s].addResult(u"Error: no such image"_s);
        desk.actions[u"start d"_s].finish();
        QTRY_VERIFY(desk.item(u"Error: no such image"_s));

        choose(u"c"_s, u"Stop"_s);
        QTRY_VERIFY(desk.item(u"Stop c?"_s));
        desk.press(Qt::Key_Escape);
        QTRY_VERIFY(!desk.item(u"Stop c?"_s));
        QCOMPARE(desk.actions.size(), 1);
        QCOMPARE(desk.closings(), 0);
        choose(u"c"_s, u"Stop"_s);
        desk.click(u"Stop"_s);
        QCOMPARE(desk.actions.size(), 2);
        desk.actions[u"stop c"_s].addResult(std::nullopt);
        desk.actions[u"stop c"_s].finish();
        QTRY_COMPARE(desk.probed, QStringList{u"a!"_s});
    }

    void menuCommands() {
        QList<Server> servers = StoreRig::fleet(u"abc");
        servers[1].isLocal = true;
        const QUuid id = servers[1].id;
        PopoverRig desk(servers);
        CardActions actions(*desk.store, desk.ui, desk.collaborators);
        QStringList outcomes;
        for (const CardMenuEntry& entry : actions.menu(id)) {
            desk.ui.setShowingMacInfoSheet(false);
            actions.choose(id, entry);
            const Server* const server = desk.store->server(id);
            outcomes += (desk.names() + desk.terminals + desk.probed).join(QString()) +
                        (desk.ui.showingMacInfoSheet() ? u" sheet"_s : QString()) +
                        (server && !server->isEnabled ? u" paused"_s : QString());
        }
        QCOMPARE(outcomes, (QStringList{u"abc sheet"_s, u"abc"_s, u"abc"_s, u"bac"_s, u"abc"_s, u"abc"_s, u"abcb"_s,
                                        u"abcbb!"_s, u"abcbb! paused"_s, u"abcbb! paused"_s, u"acbb!"_s}));
    }

    void pinSubmenu() {
        QList<Server> servers = StoreRig::fleet(u"habc");
        servers[0].isLocal = true;
        PopoverRig desk(servers);
        const std::pair<QString, MenuBarItemSet> rows[] = {
            {u"\u2713 Mac SoC Average Temp"_s, {MenuBarItem::serverStatus}},
            {u"\u2713 Server Fleet Status"_s, {}},
            {u"Pin All Resources (CPU + GPU + RAM)"_s, pins(PinPreset::Resources)},
        };
        for (const auto& [line, pins] : rows) {
            desk.click(u"h"_s, 0, Qt::RightButton);
            desk.click(u"Pin to Menu Bar..."_s);
            desk.click(line);
            QTRY_VERIFY(!desk.item(line));
            QCOMPARE(desk.savedPins(), pins);
        }
        // The pointer on another line closes the submenu, and not the menu.
        const auto pointAt = [&desk](const QString& line) {
            for (const int x : {0, 1})
                QTest::mouseMove(desk.item(line)->window(), middle(desk.item(line)) + QPoint(x, 0));
        };
        desk.store->setServers({servers[0]});
        QTRY_VERIFY(!desk.item(u"c"_s));
        desk.click(u"h"_s, 0, Qt::RightButton);
        const QString opener = u"Pin to Menu Bar..."_s;
        QTRY_VERIFY(desk.item(opener));
        QTRY_VERIFY(desk.item(opener)->window()->height() > desk.view->height()); // whole, beyond the popover's end
        pointAt(opener);
        QTRY_VERIFY(desk.item(rows[2].first));
        pointAt(u"Move Down"_s);
        QTRY_VERIFY(!desk.item(rows[2].first));
        QVERIFY(desk.item(opener));
    }

    void figuresKeepTheirWidth() {
        TabularText figure;
        figure.setFont(QFont(u"Inter"_s));
        const QFontMetricsF metrics(figure.font());
        QVERIFY(metrics.horizontalAdvance(u"1111"_s) < 0.9 * metrics.horizontalAdvance(u"8888"_s));
        figure.setText(u"1111 ms"_s);
        const double width = figure.implicitWidth();
        figure.setText(u"8888 ms"_s);
        QCOMPARE(figure.implicitWidth(), width);

        QList<Server> servers = StoreRig::fleet(u"a");
        servers[0].metrics = metricsWith();
        PopoverRig desk(servers);
        auto* const shown = qobject_cast<TabularText*>(desk.item(u"0.0%"_s));
        QVERIFY(shown);
        QCOMPARE(shown->font().family(), u"Inter"_s);
        const QFont before = QGuiApplication::font();
        QGuiApplication::setFont(QFont(u"DejaVu Sans"_s)); // as the desktop does while the popover is open
        QCOMPARE(shown->font().family(), u"DejaVu Sans"_s);
        QGuiApplication::setFont(before);
        desk.ui.setShowingMacInfoSheet(true);
        QVERIFY(qobject_cast<TabularText*>(desk.item(u"57.8\u00b0C"_s)));
    }

    void changesOfHeightAreAnimated() {
        const QList<Server> before = StoreRig::fleet(u"ab");
        QList<Server> grown = before;
        grown[0].metrics = metricsWith(); // bars in place of a notice
        for (const QList<Server>& after : {grown, before.first(1)}) {
            PopoverRig desk(before);
            QSet<int> heights;
            connect(desk.view.get(), &QWindow::heightChanged, this, [&heights](int height) { heights += height; });
            desk.store->setServers(after);
            QTRY_VERIFY(heights.size() > 3);
        }
    }

    void drawsNothingUntouched() {
        QList<Server> servers = StoreRig::fleet(u"ab");
        servers[0].metrics = metricsWith();
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
            server.metrics = metricsWith();
        PopoverRig desk(servers);
        QQuickItem* const list = desk.item(u"serverList"_s);
        const auto cards = [&list] {
            return list->property("contentItem").value<QQuickItem*>()->childItems().size();
        };
        QVERIFY(cards() < 30);
        QCOMPARE(list->parentItem()->height(), 520);
        QMetaObject::invokeMethod(list, "positionViewAtEnd");
        QTRY_VERIFY(desk.item(u"1000"_s));
        QVERIFY(cards() < 30);
        // What changes above does not move what is seen.
        const QPoint before = middle(desk.item(u"1000"_s));
        servers[3].metrics->latencyMs = 7;
        desk.store->setServers(servers);
        QCoreApplication::processEvents();
        QCOMPARE(middle(desk.item(u"1000"_s)), before);
    }
};

QTEST_MAIN(PopoverViewTest)
#include "tst_popoverview.moc"
