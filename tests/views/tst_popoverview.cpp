#include "../computer/SampleComputer.h"
#include "ViewRig.h"

#include <QAccessible>
#include <QPointer>
#include <QSignalSpy>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

ServerMetrics metricsWith(const QList<ContainerInfo>& containers) {
    ServerMetrics metrics;
    metrics.memoryTotalMB = 1024;
    metrics.latencyMs = 19;
    metrics.containers = containers;
    return metrics;
}

ContainerInfo container(const QString& id, const QString& state) {
    return {id, id, u"image"_s, u"Up 2 days"_s, state, {}};
}

/// The visible items of a view whose `text` this is, in the order of the screen.
QList<QQuickItem*> itemsSaying(const QQuickItem* root, const QString& text) {
    QList<QQuickItem*> found;
    for (QQuickItem* child : root->childItems()) {
        if (!child->isVisible())
            continue;
        if (child->property("text").toString() == text)
            found += child;
        else
            found += itemsSaying(child, text);
    }
    std::ranges::stable_sort(found, {}, [](const QQuickItem* item) { return item->mapToScene({}).y(); });
    return found;
}

/// The popover over a scripted store, pressed like a user presses it.
struct Desk : StoreRig {
    UIState ui;
    SampleComputer sample;
    QStringList terminals;
    QStringList opened;
    std::map<QString, QPromise<bool>> restarts;
    std::unique_ptr<PopoverView> view;

    explicit Desk(const QList<Server>& servers) {
        failOnQmlWarnings();
        startWith(servers);
        view = std::make_unique<PopoverView>(
            *store, ui,
            ViewCollaborators{
                .computer = sample.computer,
                .restartContainer =
                    [this](const Server&, const QString& id) {
                        QPromise<bool>& promise = restarts[id];
                        promise.start();
                        return promise.future();
                    },
                .openServerSSH = [this](const Server& server) { terminals += server.name; },
                .openDockerContainer =
                    [this](const Server& server, const ContainerInfo& container) {
                        terminals += server.name + u'/' + container.name;
                    },
                .openAddress = [this](const QUrl& address) { opened += address.toString(); },
                .sshHosts = [] { return QList<SSHConfigHost>(); },
            });
        QVERIFY(view->errors().isEmpty());
        view->show();
        QVERIFY(QTest::qWaitForWindowActive(view.get()));
    }
    [[nodiscard]] QList<QQuickItem*> all(const QString& text) const { return itemsSaying(view->contentItem(), text); }
    [[nodiscard]] QPoint middle(const QQuickItem* item) const {
        return item->mapToScene({item->width() / 2, item->height() / 2}).toPoint();
    }
    void press(const QString& text, qsizetype which = 0, Qt::MouseButton button = Qt::LeftButton) {
        QTRY_VERIFY2(all(text).size() > which, qPrintable(u"nothing says "_s + text));
        QTRY_VERIFY(isStill(text, which));
        QTest::mouseClick(view.get(), button, {}, middle(all(text)[which]));
    }
    /// Whether an item has come to rest.
    [[nodiscard]] bool isStill(const QString& text, qsizetype which) const {
        const auto place = [&] {
            const auto items = all(text);
            return std::pair(items.size() > which ? middle(items[which]) : QPoint(), view->size());
        };
        const auto before = place();
        QTest::qWait(80);
        return place() == before;
    }
    [[nodiscard]] QString focused() const {
        const QQuickItem* item = view->activeFocusItem();
        return item ? item->property("text").toString() : QString();
    }
};

} // namespace

class PopoverViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { configureQuick(); }

    /// Also of a popover that was open before.
    void accessibleOnceSomebodyListens() {
        Desk desk({StoreRig::server(u"a"_s)});
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
        Desk desk({StoreRig::server(u"a"_s)});
        QCOMPARE(desk.view->width(), 400);
        desk.press(u"Refresh All Servers"_s);
        QVERIFY(desk.store->isRefreshing());
        QCOMPARE(desk.probed, QStringList({u"a"_s}));
        desk.press(u"Refresh All Servers"_s);
        QCOMPARE(desk.probed.size(), 1); // disabled meanwhile
        desk.probes[u"a"_s].answer(metricsWith({}));
        QTRY_VERIFY(desk.all(u"Refresh All Servers"_s)[0]->isEnabled());
        QVERIFY(desk.all(updatedText(desk.store->lastRefreshedAll(), QLocale::system())).size() == 1);

        desk.press(u"Web"_s);
        desk.press(u"Ko-fi"_s);
        QCOMPARE(desk.opened, QStringList({u"https://tarnwick.example"_s, u"https://ko-fi.com/tarnwick"_s}));
    }

    void sheets_data() {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("flag");
        QTest::addColumn<QSize>("size");
        QTest::newRow("add") << u"Add New Server"_s << u"showingAddServer"_s << QSize(480, 460);
        QTest::newRow("hardware") << u"Hardware Specs & Thermals"_s << u"showingMacInfoSheet"_s << QSize(400, 560);
        QTest::newRow("settings") << u"Settings"_s << u"showingSettings"_s << QSize(400, 560);
    }
    void sheets() {
        QFETCH(QString, button);
        QFETCH(QString, flag);
        QFETCH(QSize, size);
        const auto isShown = [&flag](const Desk& desk) {
            return desk.ui.property(flag.toLatin1()).toBool();
        };
        Desk desk({StoreRig::server(u"a"_s)});
        const QSize before = desk.view->size();
        const QSignalSpy close(desk.view.get(), &PopoverView::closeRequested);
        for (int time = 0; time < 2; ++time) {
            desk.press(button);
            QVERIFY(isShown(desk));
            QTRY_COMPARE(desk.view->size(), size);
            // The keyboard stays on the sheet.
            for (int tab = 0; tab < 30; ++tab) {
                QTest::keyClick(desk.view.get(), Qt::Key_Tab);
                QVERIFY(desk.focused() != u"Refresh All Servers"_s && desk.focused() != u"Web"_s);
            }
            QTest::keyClick(desk.view.get(), Qt::Key_Escape);
            QTRY_VERIFY(!isShown(desk));
            QTRY_COMPARE(desk.view->size(), before);
            QCOMPARE(close.count(), 0);
        }
        QTest::keyClick(desk.view.get(), Qt::Key_Escape);
        QCOMPARE(close.count(), 1);
        // It may also go with its sheets on it.
        desk.press(button);
        desk.ui.setShowingOnboarding(true);
        QTRY_COMPARE(desk.view->size(), QSize(540, std::max(size.height(), 510)));
        desk.view.reset();
    }

    void emptyFleet() {
        Desk desk({StoreRig::server(u"a"_s)});
        desk.press(u"Remove server from Tarnwick"_s);
        QVERIFY(desk.store->servers().isEmpty());
        desk.press(u"Add First Server"_s);
        QVERIFY(desk.ui.showingAddServer());
        QTest::keyClick(desk.view.get(), Qt::Key_X); // its first field has the keyboard
        QTRY_COMPARE(desk.ui.newServerName(), u"x"_s);
        desk.ui.setShowingAddServer(false);
        desk.store->setServers({StoreRig::server(u"b"_s)});
        QTRY_COMPARE(desk.all(u"b"_s).size(), 1);
        QVERIFY(desk.all(u"Add First Server"_s).isEmpty());
    }

    void cardButtons() {
        Server local = StoreRig::server(u"here"_s);
        local.isLocal = true;
        local.metrics = metricsWith({});
        Desk desk({local, StoreRig::server(u"b"_s)});
        desk.press(u"Open SSH in Terminal"_s, 1);
        QCOMPARE(desk.terminals, QStringList({u"b"_s}));
        desk.press(u"Refresh this server"_s, 1);
        QCOMPARE(desk.probed, QStringList({u"b"_s}));
        desk.probes[u"b"_s].answer(metricsWith({}));
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

    void containers() {
        Server server = StoreRig::server(u"a"_s);
        server.metrics = metricsWith({container(u"one"_s, u"Running"_s), container(u"two"_s, u"exited"_s)});
        Desk desk({server});
        desk.press(u"1 / 2 Containers"_s);
        QVERIFY(desk.ui.isExpanded(server.id));
        desk.press(u"Container is stopped"_s);
        desk.press(u"Enter container shell (docker exec)"_s);
        QCOMPARE(desk.terminals, QStringList({u"a/one"_s}));
        // New metrics change the rows in place.
        const QPointer<QQuickItem> row = desk.all(u"one"_s)[0];
        server.metrics->containers = {container(u"first"_s, u"exited"_s), container(u"two"_s, u"exited"_s)};
        desk.store->setServers({server});
        QTRY_COMPARE(desk.all(u"first"_s), QList<QQuickItem*>{row});
        server.metrics->containers.append(container(u"two"_s, u"running"_s)); // of the same id
        desk.store->setServers({server});
        QTRY_COMPARE(desk.all(u"two"_s).size(), 2);
        server.metrics->containers.resize(1);
        desk.store->setServers({server});
        QTRY_VERIFY(desk.all(u"two"_s).isEmpty());
        QCOMPARE(desk.all(u"first"_s), QList<QQuickItem*>{row});
        desk.press(u"0 / 1 Containers"_s);
        QTRY_VERIFY(desk.all(u"first"_s).isEmpty());
    }

    void oneRestartAtATime() {
        QList<Server> servers{StoreRig::server(u"a"_s), StoreRig::server(u"b"_s)};
        Desk desk(servers);
        for (Server& server : servers) {
            server.metrics = metricsWith({container(server.name + u'1', u"exited"_s)});
            desk.ui.toggleExpanded(server.id);
        }
        desk.store->setServers(servers);
        const QString restart = u"Restart container"_s;
        desk.press(restart, 1);
        QCOMPARE(desk.ui.restartingContainerId(), u"b1"_s);
        QTRY_VERIFY(desk.all(restart)[1]->property("busy").toBool());
        QVERIFY(!desk.all(restart)[0]->isEnabled() && !desk.all(restart)[0]->property("busy").toBool());
        desk.press(restart, 0);
        QCOMPARE(desk.restarts.size(), 1);

        desk.restarts[u"b1"_s].addResult(false);
        desk.restarts[u"b1"_s].finish();
        QTRY_VERIFY(desk.all(restart)[0]->isEnabled());
        QVERIFY(desk.probed.isEmpty());

        desk.press(restart, 0);
        desk.restarts[u"a1"_s].addResult(true);
        desk.restarts[u"a1"_s].finish();
        QTRY_COMPARE(desk.probed, QStringList({u"a"_s}));
        QCOMPARE(desk.ui.restartingContainerId(), u"a1"_s); // until the refresh has ended, too
        desk.probes[u"a"_s].answer(metricsWith({container(u"a1"_s, u"running"_s)}));
        QTRY_VERIFY(!desk.ui.restartingContainerId());
    }

    void restartOutlivesTheView() {
        Server server = StoreRig::server(u"a"_s);
        server.metrics = metricsWith({container(u"one"_s, u"running"_s)});
        Desk desk({server});
        desk.ui.toggleExpanded(server.id);
        desk.press(u"Restart container"_s);
        desk.view.reset();
        desk.restarts[u"one"_s].addResult(true);
        desk.restarts[u"one"_s].finish();
        QTRY_COMPARE(desk.probed, QStringList({u"a"_s}));
        desk.probes[u"a"_s].answer(metricsWith({}));
        QTRY_VERIFY(!desk.ui.restartingContainerId());
    }

    void contextMenu() {
        Desk desk({StoreRig::server(u"a"_s), StoreRig::server(u"b"_s)});
        desk.press(u"b"_s, 0, Qt::RightButton);
        desk.press(u"Move Down"_s); // disabled: it is the last
        QCOMPARE(desk.names(), QStringList({u"a"_s, u"b"_s}));
        desk.press(u"Move Up"_s);
        QCOMPARE(desk.names(), QStringList({u"b"_s, u"a"_s}));
        QTRY_VERIFY(desk.all(u"Delete Server"_s).isEmpty());

        // By keys: Up goes around to the last line, the disabled first one is passed over.
        QTest::keyClick(desk.view.get(), Qt::Key_Escape);
        for (int tab = 0; tab < 5; ++tab)
            QTest::keyClick(desk.view.get(), Qt::Key_Tab);
        QTest::keyClick(desk.view.get(), Qt::Key_Menu);
        QTRY_COMPARE(desk.all(u"Delete Server"_s).size(), 1);
        QTest::keyClick(desk.view.get(), Qt::Key_Down);
        QTest::keyClick(desk.view.get(), Qt::Key_Return);
        QCOMPARE(desk.names(), QStringList({u"a"_s, u"b"_s}));
        QTRY_VERIFY(desk.all(u"Delete Server"_s).isEmpty());
        QTest::keyClick(desk.view.get(), Qt::Key_Menu);
        QTRY_COMPARE(desk.all(u"Delete Server"_s).size(), 1);
        QTest::keyClick(desk.view.get(), Qt::Key_Up);
        QTest::keyClick(desk.view.get(), Qt::Key_Return);
        QCOMPARE(desk.names(), QStringList({u"a"_s}));

        // Escape closes the menu alone.
        const QSignalSpy close(desk.view.get(), &PopoverView::closeRequested);
        desk.press(u"a"_s, 0, Qt::RightButton);
        QTRY_COMPARE(desk.all(u"Pause Monitoring"_s).size(), 1);
        QTest::keyClick(desk.view.get(), Qt::Key_Escape);
        QTRY_VERIFY(desk.all(u"Pause Monitoring"_s).isEmpty());
        QVERIFY(close.isEmpty());
    }

    void pinSubmenu() {
        Server local = StoreRig::server(u"here"_s);
        local.isLocal = true;
        Desk desk({local, StoreRig::server(u"a"_s), StoreRig::server(u"b"_s), StoreRig::server(u"c"_s)});
        const auto pins = [&desk] {
            return desk.store->settings().pinnedMenuBarItems;
        };
        const auto choose = [&desk](const QString& text) {
            desk.press(u"here"_s, 0, Qt::RightButton);
            desk.press(u"Pin to Menu Bar..."_s);
            desk.press(text);
            QTRY_VERIFY(desk.all(text).isEmpty());
        };
        QVERIFY(desk.saves([&] { choose(u"\u2713 Mac SoC Average Temp"_s); }));
        QCOMPARE(pins(), MenuBarItemSet({MenuBarItem::serverStatus}));
        choose(u"\u2713 Server Fleet Status"_s);
        QVERIFY(pins().empty());
        choose(u"Pin All Resources (CPU + GPU + RAM)"_s);
        QCOMPARE(pins(), tarnwick::pins(PinPreset::Resources));
    }

    void dragging_data() {
        QTest::addColumn<int>("dragged");
        QTest::addColumn<int>("target");
        QTest::addColumn<QString>("order");
        QTest::newRow("third onto first") << 2 << 0 << u"3 1 2 4 5"_s;
        QTest::newRow("first onto third") << 0 << 2 << u"2 3 1 4 5"_s;
        QTest::newRow("onto the next") << 3 << 4 << u"1 2 3 5 4"_s;
        QTest::newRow("off the cards") << 1 << -1 << u"1 2 3 4 5"_s;
    }
    void dragging() {
        QFETCH(int, dragged);
        QFETCH(int, target);
        QFETCH(QString, order);
        const QList<Server> servers = StoreRig::numbered(5);
        Desk desk(servers);
        const auto headOf = [&desk](int number) {
            return desk.middle(desk.all(QString::number(number + 1))[0]);
        };
        QTRY_COMPARE(desk.all(u"5"_s).size(), 1);
        const QPoint start = headOf(dragged);
        const QPoint end = target < 0 ? QPoint(200, 20) : headOf(target);
        QTest::mousePress(desk.view.get(), Qt::LeftButton, {}, start);
        QTest::mouseMove(desk.view.get(), start + QPoint(12, 0));
        QTRY_COMPARE(desk.ui.draggedServerId(), servers[dragged].id);
        // Straight onto the target: the cards between are never entered.
        QVERIFY(!desk.saves([&] { QTest::mouseMove(desk.view.get(), end); }));
        if (target >= 0)
            QTRY_COMPARE(desk.names().join(u' '), order);
        QVERIFY(desk.saves([&] { QTest::mouseRelease(desk.view.get(), Qt::LeftButton, {}, end); }));
        QVERIFY(!desk.ui.draggedServerId());
        if (target >= 0)
            QCOMPARE(desk.names().join(u' '), order);
    }

    void tabPassesEveryControlInOrder() {
        QList<Server> servers{StoreRig::server(u"a"_s), StoreRig::server(u"b"_s), StoreRig::server(u"c"_s)};
        Desk desk(servers);
        desk.store->moveServer(0, 2);
        QTRY_COMPARE(desk.names(), QStringList({u"b"_s, u"c"_s, u"a"_s}));
        desk.press(u"c"_s); // on its handle, which takes no focus
        QStringList passed;
        const int stops = 4 + 3 * 5 + 2;
        for (int tab = 0; tab < stops; ++tab) {
            QTest::keyClick(desk.view.get(), Qt::Key_Tab);
            const QQuickItem* item = desk.view->activeFocusItem();
            const QVariant content = item->property("content");
            passed += content.isValid() ? content.value<ServerCardContent>().name : desk.focused();
        }
        const QStringList buttons{u"Pause monitoring"_s, u"Open SSH in Terminal"_s, u"Refresh this server"_s,
                                  u"Remove server from Tarnwick"_s};
        QCOMPARE(passed, QStringList({u"Refresh All Servers"_s, u"Add New Server"_s, u"Hardware Specs & Thermals"_s,
                                      u"Settings"_s, u"b"_s}) +
                             buttons + QStringList{u"c"_s} + buttons + QStringList{u"a"_s} + buttons +
                             QStringList({u"Web"_s, u"Ko-fi"_s}));
        QTest::keyClick(desk.view.get(), Qt::Key_Backtab);
        QTest::keyClick(desk.view.get(), Qt::Key_Return);
        QCOMPARE(desk.opened, QStringList({u"https://tarnwick.example"_s}));
    }

    void drawsNothingUntouched() {
        QList<Server> servers{StoreRig::server(u"a"_s), StoreRig::server(u"b"_s)};
        servers[0].metrics = metricsWith({});
        servers[1].isEnabled = false;
        Desk desk(servers);
        QSignalSpy frames(desk.view.get(), &QQuickWindow::frameSwapped);
        QTRY_VERIFY([&] {
            frames.clear();
            QTest::qWait(300);
            return frames.isEmpty();
        }());
    }

    void cardsStandInOrderAfterChanges() {
        Desk desk(StoreRig::numbered(4));
        // Changes that fall into the animations of those before.
        for (int round = 0; round < 12; ++round) {
            QList<Server> changed = desk.store->servers();
            changed.move(round % changed.size(), (round * 7 + 3) % changed.size());
            if (round % 4 == 1)
                changed.removeLast();
            if (round % 4 == 3)
                changed.insert(1, StoreRig::server(u"new "_s + QString::number(round)));
            desk.store->setServers(changed);
            QTest::qWait(40);
        }
        const auto tops = [&desk] {
            QList<double> result;
            for (const QString& name : desk.names()) {
                const auto found = desk.all(name);
                result += found.isEmpty() ? -1 : found[0]->mapToScene({}).y();
            }
            return result;
        };
        const double pitch = 73 + 12; // a card that is being checked, and the space below it
        QTRY_VERIFY([&] {
            const QList<double> is = tops();
            for (qsizetype card = 1; card < is.size(); ++card)
                if (qAbs(is[card] - is[card - 1] - pitch) > 3)
                    return false;
            return is.first() > 0;
        }());
    }

    void aThousandCards() {
        QList<Server> servers = StoreRig::numbered(1000);
        for (Server& server : servers)
            server.metrics = metricsWith({});
        Desk desk(servers);
        auto* list = desk.view->rootObject()->findChild<QQuickItem*>(u"serverList"_s);
        const auto cards = [&list] {
            return list->property("contentItem").value<QQuickItem*>()->childItems().size();
        };
        QVERIFY(cards() < 30);
        QMetaObject::invokeMethod(list, "positionViewAtEnd");
        QTRY_COMPARE(desk.all(u"1000"_s).size(), 1);
        QVERIFY(cards() < 30);
        // What changes above does not move what is seen.
        const QPoint before = desk.middle(desk.all(u"1000"_s)[0]);
        servers[3].metrics->latencyMs = 7;
        desk.store->setServers(servers);
        QCoreApplication::processEvents();
        QCOMPARE(desk.middle(desk.all(u"1000"_s)[0]), before);
    }
};

QTEST_MAIN(PopoverViewTest)
#include "tst_popoverview.moc"
