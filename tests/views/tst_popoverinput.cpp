#include "PopoverRig.h"
#include "card/ServerDropDelegate.h"

using namespace Qt::StringLiterals;
using namespace tarnwick;

/// Dragging cards, the context menu, and the keyboard.
class PopoverInputTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
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
        PopoverRig desk(servers);
        const auto headOf = [&desk](int number) {
            return middle(desk.all(QString::number(number + 1))[0]);
        };
        QTRY_COMPARE(desk.all(u"5"_s).size(), 1);
        const QPoint start = headOf(dragged);
        const QPoint end = target < 0 ? QPoint(200, 20) : headOf(target);
        QTest::mousePress(desk.view.get(), Qt::LeftButton, {}, start);
        QTest::mouseMove(desk.view.get(), start + QPoint(12, 0));
        QTRY_COMPARE(desk.ui.draggedServerId(), servers[dragged].id);
        // Straight onto the target: the cards between are never entered.
        QVERIFY(!desk.saves([&] { QTest::mouseMove(desk.view.get(), end); }));
        QTRY_COMPARE(desk.names().join(u' '), order);
        QVERIFY(desk.saves([&] { QTest::mouseRelease(desk.view.get(), Qt::LeftButton, {}, end); }));
        QVERIFY(!desk.ui.draggedServerId());
        QCOMPARE(desk.names().join(u' '), order);
    }

    void dropDelegatePassingOverSeveral() {
        StoreRig fleet;
        UIState ui;
        fleet.startWith(StoreRig::fleet(u"12345"));
        const QList<Server> servers = fleet.store->servers();
        const auto enter = [&](const Server& target) {
            ServerDropDelegate{target, *fleet.store, ui}.dropEntered();
            return fleet.names().join(QString());
        };
        QCOMPARE(enter(servers[1]), u"12345"_s); // nothing is dragged
        ui.setDraggedServerId(servers[0].id);
        QCOMPARE(enter(servers[0]), u"12345"_s);
        QCOMPARE(enter(servers[1]), u"21345"_s);
        QCOMPARE(enter(servers[2]), u"23145"_s);
        QCOMPARE(enter(servers[3]), u"23415"_s);
        fleet.store->removeServer(servers[4].id);
        QCOMPARE(enter(servers[4]), u"2341"_s);
        ui.setDraggedServerId(servers[4].id);
        QCOMPARE(enter(servers[0]), u"2341"_s);
    }

    void cardsStandInOrderAfterChanges() {
        PopoverRig desk(StoreRig::numbered(4));
        QSignalSpy frames(desk.view.get(), &QQuickWindow::frameSwapped);
        for (int round = 0; round < 12; ++round) {
            QList<Server> changed = desk.store->servers();
            changed.move(round % changed.size(), (round * 7 + 3) % changed.size());
            if (round % 4 == 1)
                changed.removeLast();
            if (round % 4 == 3)
                changed.insert(1, StoreRig::server(u"new "_s + QString::number(round)));
            desk.store->setServers(changed);
            frames.clear();
            QTRY_VERIFY(frames.count() > 1); // the next change falls into this one's animation
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

    void contextMenu() {
        PopoverRig desk(StoreRig::fleet(u"ab"));
        const auto order = [&desk] {
            return desk.names().join(u' ');
        };
        const auto lines = [&desk] {
            return desk.all(u"Delete Server"_s).size();
        };
        desk.press(u"b"_s, 0, Qt::RightButton);
        desk.press(u"Move Down"_s); // disabled: it is the last
        QCOMPARE(order(), u"a b"_s);
        desk.press(u"Move Up"_s);
        QCOMPARE(order(), u"b a"_s);
        QTRY_COMPARE(lines(), 0);

        // By keys: the disabled first line is skipped, and Up goes around to the last one.
        desk.key(Qt::Key_Escape);
        desk.key(Qt::Key_Tab, 5);
        for (const auto& [arrow, expected] : {std::pair(Qt::Key_Down, u"a b"_s), {Qt::Key_Up, u"a"_s}}) {
            desk.key(Qt::Key_Menu);
            QTRY_COMPARE(lines(), 1);
            desk.key(arrow);
            desk.key(Qt::Key_Return);
            QCOMPARE(order(), expected);
            QTRY_COMPARE(lines(), 0);
        }

        // Escape closes the menu alone.
        const QSignalSpy close(desk.view.get(), &PopoverView::closeRequested);
        desk.press(u"a"_s, 0, Qt::RightButton);
        QTRY_COMPARE(lines(), 1);
        desk.key(Qt::Key_Escape);
        QTRY_COMPARE(lines(), 0);
        QVERIFY(close.isEmpty());
    }

    void tabPassesEveryControlInOrder() {
        PopoverRig desk(StoreRig::fleet(u"abc"));
        desk.store->moveServer(0, 2);
        QTRY_COMPARE(desk.names().join(u' '), u"b c a"_s);
        desk.press(u"c"_s); // on its handle, which takes no focus
        QStringList expected{u"Refresh All Servers"_s, u"Add New Server"_s, u"Hardware Specs & Thermals"_s,
                             u"Settings"_s};
        for (const QString& name : desk.names())
            expected += {name, u"Pause monitoring"_s, u"Open SSH in Terminal"_s, u"Refresh this server"_s,
                         u"Remove server from Tarnwick"_s};
        expected += {u"Web"_s, u"Ko-fi"_s};
        QStringList passed;
        for (int tab = 0; tab < expected.size(); ++tab) {
            desk.key(Qt::Key_Tab);
            const QVariant content = desk.view->activeFocusItem()->property("content");
            passed += content.isValid() ? content.value<ServerCardContent>().name : desk.focused();
        }
        QCOMPARE(passed, expected);
        desk.key(Qt::Key_Backtab);
        desk.key(Qt::Key_Return);
        QCOMPARE(desk.opened, QStringList({u"https://tarnwick.example"_s}));
    }
};

QTEST_MAIN(PopoverInputTest)
#include "tst_popoverinput.moc"
