#include "ViewRig.h"
#include "card/ServerDropDelegate.h"

#include <QAccessible>
#include <QInputMethodEvent>
#include <QMimeData>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

/// Ten servers "web-0" to "web-9": of each three one is offline, one is well, and one has not answered yet; the last is
/// paused.
QList<Server> tenServers() {
    QList<Server> servers;
    for (int number = 0; number < 10; ++number) {
        servers += StoreRig::server(u"web-%1"_s.arg(number));
        if (number % 3 < 2)
            servers.last().metrics = number % 3 == 0 ? ServerMetrics::offline(u"gone"_s) : ServerMetrics();
    }
    servers.last().isEnabled = false;
    return servers;
}

/// The names on the cards, from top to bottom.
QString cardsOf(const ViewRig& desk) {
    QStringList names;
    const auto* model = desk.item(u"serverList"_s)->property("model").value<QAbstractItemModel*>();
    for (int row = 0; row < model->rowCount(); ++row)
        names += model->index(row, 0).data(ServerListModel::ContentRole).value<ServerCardContent>().name;
    return names.join(u' ');
}

/// What has the keyboard: a card's name, or a control's text.
QString focused(const ViewRig& desk) {
    const QQuickItem* const item = desk.view->activeFocusItem();
    const QVariant content = item->property("content");
    return content.isValid() ? content.value<ServerCardContent>().name : item->property("text").toString();
}

} // namespace

/// Dragging cards, the context menu, and the keyboard.
class PopoverInputTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void dragging() {
        const std::tuple<int, int, QString> rows[] = {
            {2, 0, u"3 1 2 4 5"_s},
            {0, 2, u"2 3 1 4 5"_s},
            {3, 4, u"1 2 3 5 4"_s},
            {1, -1, u"1 2 3 4 5"_s}, // off the cards
        };
        for (const auto& [dragged, target, order] : rows) {
            const QList<Server> servers = StoreRig::numbered(5);
            PopoverRig desk(servers);
            QTRY_VERIFY(desk.item(u"5"_s));
            const QPoint start = middle(desk.item(servers[dragged].name));
            const QPoint end = target < 0 ? QPoint(200, 20) : middle(desk.item(servers[target].name));
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
    }

    /// Beyond the popover it is a drag of the desktop: of the card's id as plain text, which the cards accept.
    void draggingOutAndBack() {
        const QList<Server> servers = StoreRig::numbered(3);
        PopoverRig desk(servers);
        QTRY_VERIFY(desk.item(u"3"_s));
        const auto idOf = [&servers](int which) {
            return servers[which].id.toString(QUuid::WithoutBraces).toUpper();
        };
        const auto drop = [&desk](const QString& text) {
            QMimeData data;
            data.setText(text);
            const QPoint place = middle(desk.item(u"1"_s));
            QDragEnterEvent enter(place, Qt::MoveAction, &data, Qt::LeftButton, {});
            QDragMoveEvent move(place + QPoint(1, 0), Qt::MoveAction, &data, Qt::LeftButton, {});
            QDropEvent end(place, Qt::MoveAction, &data, Qt::LeftButton, {});
            for (QEvent* event : std::initializer_list<QEvent*>{&enter, &move, &end})
                QCoreApplication::sendEvent(desk.view.get(), event);
            return enter.isAccepted();
        };
        QVERIFY(!drop(idOf(2))); // nothing is dragged
        const auto drag = [&desk](const QString& name, QPoint way) {
            const QPoint start = middle(desk.item(name));
            QTest::mousePress(desk.view.get(), Qt::LeftButton, {}, start);
            QTest::mouseMove(desk.view.get(), start + QPoint(12, 0));
            QTest::mouseMove(desk.view.get(), start + way);
        };
        drag(u"3"_s, {20, 0});
        QVERIFY(!drop(idOf(1)));
        QVERIFY(desk.saves([&] { QVERIFY(drop(idOf(2))); }));
        QCOMPARE(desk.names().join(u' '), u"3 1 2"_s);
        QVERIFY(!desk.ui.draggedServerId());
        QTest::mouseRelease(desk.view.get(), Qt::LeftButton, {}, {});
        // This platform's own drags end at once, although the button is down.
        drag(u"2"_s, {-200, 0});
        QTRY_VERIFY(!desk.ui.draggedServerId());
        QTest::mouseRelease(desk.view.get(), Qt::LeftButton, {}, {});
        drag(u"2"_s, {20, 0});
        desk.store->removeServer(servers[1].id);
        QTRY_VERIFY(!desk.ui.draggedServerId());
    }

    void draggingScrolls() {
        PopoverRig desk(StoreRig::numbered(12));
        const QQuickItem* const list = desk.item(u"serverList"_s)->parentItem();
        const QPoint start = middle(desk.item(u"1"_s));
        QTest::mousePress(desk.view.get(), Qt::LeftButton, {}, start);
        QTest::mouseMove(desk.view.get(), start + QPoint(12, 0));
        const QStringList before = desk.names();
        QPoint end;
        for (const auto& [height, place] : {std::pair(list->height() - 10, 11), {10.0, 0}}) {
            end = list->mapToScene({100, height}).toPoint();
            QTest::mouseMove(desk.view.get(), end);
            QTRY_COMPARE_WITH_TIMEOUT(desk.names().indexOf(u"1"_s), place, 30'000);
        }
        QTest::mouseRelease(desk.view.get(), Qt::LeftButton, {}, end);
        QCOMPARE(desk.names(), before);
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
        const auto topOf = [&desk](const QString& name) {
            const QQuickItem* const head = desk.item(name);
            return head ? head->mapToScene({}).y() : -1;
        };
        const double pitch = 73 + 12; // a card that is being checked, and the space below it
        QTRY_VERIFY([&] {
            const QStringList names = desk.names();
            for (qsizetype card = 1; card < names.size(); ++card)
                if (qAbs(topOf(names[card]) - topOf(names[card - 1]) - pitch) > 3)
                    return false;
            return topOf(names[0]) > 0;
        }());
    }

    void contextMenu() {
        PopoverRig desk(StoreRig::fleet(u"ab"));
        const auto order = [&desk] {
            return desk.names().join(u' ');
        };
        const QString line = u"Delete Server"_s;
        desk.click(u"b"_s, 0, Qt::RightButton);
        desk.click(u"Move Down"_s); // disabled: it is the last
        QCOMPARE(order(), u"a b"_s);
        desk.click(u"Move Up"_s);
        QCOMPARE(order(), u"b a"_s);
        QTRY_VERIFY(!desk.item(line));

        // By keys: the disabled first line is skipped, and Up goes around to the last one.
        desk.press(Qt::Key_Escape);
        desk.press(Qt::Key_Tab, 5);
        for (const auto& [arrow, expected] : {std::pair(Qt::Key_Down, u"a b"_s), {Qt::Key_Up, u"a"_s}}) {
            desk.press(Qt::Key_Menu);
            QTRY_VERIFY(desk.item(line));
            desk.press(arrow);
            desk.press(Qt::Key_Return);
            QCOMPARE(order(), expected);
            QTRY_VERIFY(!desk.item(line));
        }

        const qsizetype closings = desk.closings();
        desk.click(u"a"_s, 0, Qt::RightButton);
        QTRY_VERIFY(desk.item(line));
        desk.press(Qt::Key_Escape); // closes the menu alone
        QTRY_VERIFY(!desk.item(line));
        QCOMPARE(desk.closings(), closings);
    }

    void tabPassesEveryControlInOrder() {
        PopoverRig desk(StoreRig::fleet(u"abc"));
        desk.store->moveServer(0, 2);
        QTRY_COMPARE(desk.names().join(u' '), u"b c a"_s);
        desk.click(u"c"_s); // on its handle, which takes no focus
        QStringList expected{u"Refresh All Servers"_s, u"Add New Server"_s, u"Hardware Specs & Thermals"_s,
                             u"Settings"_s};
        for (const QString& name : desk.names())
            expected += {name, u"Pause monitoring"_s, u"Open SSH in Terminal"_s, u"Refresh this server"_s,
                         u"Remove server from Tarnwick"_s};
        expected += {u"Web"_s, u"Ko-fi"_s};
        QStringList passed;
        while (passed.size() < expected.size()) {
            desk.press(Qt::Key_Tab);
            passed += focused(desk);
        }
        QCOMPARE(passed, expected);
        desk.press(Qt::Key_Return);
        desk.press(Qt::Key_Backtab);
        desk.press(Qt::Key_Return);
        QCOMPARE(desk.opened, QStringList({u"https://ko-fi.com/tarnwick"_s, u"https://tarnwick.example"_s}));
    }

    void typingFinds() {
        PopoverRig desk(tenServers());
        const QString all = desk.names().join(u' ');
        const int height = desk.view->height();
        desk.press(Qt::Key_Return);
        desk.type(u" wEB-"_s);
        QCOMPARE(focused(desk), u"wEB-"_s);
        QTRY_VERIFY(desk.item(u"10 of 10"_s));
        desk.press(Qt::Key_Return);
        desk.type(u"4"_s);
        QCOMPARE(cardsOf(desk), u"web-4"_s);
        QVERIFY(desk.terminals.isEmpty());
        desk.press(Qt::Key_Return);
        QCOMPARE(desk.terminals.join(u' '), u"web-4"_s);
        desk.type(u"x"_s);
        desk.press(Qt::Key_Enter);
        QTRY_VERIFY(desk.item(u"No server matches \u201cwEB-4x\u201d"_s));
        QCOMPARE(desk.view->height(), height);
        QCOMPARE(desk.terminals.size(), 1);
        desk.press(Qt::Key_Escape);
        QCOMPARE(cardsOf(desk), all);
        QTRY_COMPARE(desk.view->height(), height);
        QVERIFY(!desk.item(u"0 of 10"_s));
        QCOMPARE(desk.closings(), 0);
        desk.press(Qt::Key_Escape);
        QCOMPARE(desk.closings(), 1);

        // A focused control keeps its own keys; others are typed.
        desk.press(Qt::Key_Tab, 4);
        desk.type(u"7"_s);
        QCOMPARE(cardsOf(desk), u"web-7"_s);
        desk.press(Qt::Key_Backspace);
        QCOMPARE(cardsOf(desk), all);
        desk.click(u"Pause monitoring"_s, 0);
        desk.type(u"p"_s);
        desk.click(u"Show all servers (Escape)"_s);
        QCOMPARE(cardsOf(desk), all);
        desk.press(Qt::Key_Tab);
        desk.press(Qt::Key_Space);
        QTRY_VERIFY(desk.store->isRefreshing());
        QCOMPARE(cardsOf(desk), all);
        // So does a form.
        desk.ui.setShowingAddServer(true);
        QTRY_COMPARE(desk.view->width(), 480);
        desk.type(u"7"_s);
        QCOMPARE(desk.ui.newServerName(), u"7"_s);
        QCOMPARE(desk.closings(), 1);
    }

    void inputMethodsFind() {
        QAccessible::setActive(true);
        PopoverRig desk(StoreRig::fleet(u"\u00e9b"));
        QInputMethodEvent composing(u"\u00b4"_s, {});
        QCoreApplication::sendEvent(desk.view->activeFocusItem(), &composing);
        QCOMPARE(cardsOf(desk), u"\u00e9 b"_s);
        QInputMethodEvent composed;
        composed.setCommitString(u"\u00c9"_s);
        QCoreApplication::sendEvent(desk.view->activeFocusItem(), &composed);
        QCOMPARE(cardsOf(desk), u"\u00e9"_s);
        const auto* const field = QAccessible::queryAccessibleInterface(desk.view->activeFocusItem());
        QCOMPARE(field->role(), QAccessible::EditableText);
        QCOMPARE(field->text(QAccessible::Name), u"Find servers"_s);
        QCOMPARE(field->text(QAccessible::Description), u"1 of 2"_s);
        QAccessible::setActive(false);
    }

    void arrowsWalkTheCards() {
        QList<Server> servers = tenServers();
        PopoverRig desk(servers);
        const auto* const list = desk.item(u"serverList"_s)->parentItem();
        for (int card = 0; card < 10; ++card) {
            desk.press(Qt::Key_Down);
            QCOMPARE(focused(desk), servers[card].name);
            QVERIFY(list->contains(list->mapFromScene(middle(desk.view->activeFocusItem()))));
            desk.press(Qt::Key_Tab);
            QVERIFY(list->contains(list->mapFromScene(middle(desk.view->activeFocusItem()))));
        }
        desk.press(Qt::Key_Down);
        desk.press(Qt::Key_Up);
        QCOMPARE(focused(desk), u"web-8"_s);
        desk.type(u"off"_s);
        QCOMPARE(cardsOf(desk), u"web-0 web-3 web-6"_s);
        desk.press(Qt::Key_Down, 2);
        QCOMPARE(focused(desk), u"web-3"_s);
        // The card recovers, and leaves.
        servers[3].metrics = ServerMetrics();
        desk.store->setServers(servers);
        QTRY_COMPARE(cardsOf(desk), u"web-0 web-6"_s);
        QTRY_VERIFY(!desk.item(u"web-3"_s));
        desk.press(Qt::Key_Down);
        desk.press(Qt::Key_Up);
        QCOMPARE(focused(desk), u"off"_s);
        // The order is the one of all.
        desk.ui.setDraggedServerId(servers[0].id);
        ServerDropDelegate{servers[6], *desk.store, desk.ui}.dropEntered();
        QTRY_COMPARE(cardsOf(desk), u"web-6 web-0"_s);
        QCOMPARE(desk.names().join(u' '), u"web-1 web-2 web-3 web-4 web-5 web-6 web-0 web-7 web-8 web-9"_s);
    }

    void groupsOfALargeFleet() {
        QList<Server> servers = tenServers();
        PopoverRig desk(servers);
        for (const QString& text : {u"0 warning"_s, u"3 well"_s, u"1 paused"_s})
            QVERIFY(desk.item(text));
        desk.click(u"3 offline"_s);
        QCOMPARE(cardsOf(desk), u"web-0 web-3 web-6"_s);
        QVERIFY(!desk.item(u"3 of 10"_s)); // there is no text
        desk.type(u"6"_s);
        QCOMPARE(cardsOf(desk), u"web-6"_s);
        QVERIFY(desk.item(u"1 of 10"_s));
        desk.press(Qt::Key_Escape);
        QCOMPARE(cardsOf(desk), desk.names().join(u' '));
        desk.click(u"3 well"_s);
        desk.click(u"1 paused"_s);
        QCOMPARE(cardsOf(desk), u"web-9"_s);
        // All that were chosen are gone, and can be given up.
        servers.last().isEnabled = true;
        desk.store->setServers(servers);
        QTRY_VERIFY(desk.item(u"No server matches \u201cpaused\u201d"_s));
        desk.click(u"0 paused"_s);
        QCOMPARE(cardsOf(desk), desk.names().join(u' '));
        // A fleet without groups is not filtered by one.
        desk.click(u"3 well"_s);
        desk.store->setServers(servers.first(9));
        QTRY_COMPARE(cardsOf(desk), u"web-1 web-4 web-7"_s);
        desk.store->setServers(servers.first(8));
        QTRY_COMPARE(cardsOf(desk), desk.names().join(u' '));
        QTRY_VERIFY(!desk.item(u"3 well"_s));
    }
};

QTEST_MAIN(PopoverInputTest)
#include "tst_popoverinput.moc"
