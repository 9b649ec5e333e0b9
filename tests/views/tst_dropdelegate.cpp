#include "CardActions.h"
#include "ServerDropDelegate.h"
#include "StoreRig.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

/// Five servers, 1 to 5.
struct Fleet : StoreRig {
    UIState ui;
    Fleet() {
        startWith({server(u"1"_s), server(u"2"_s), server(u"3"_s), server(u"4"_s), server(u"5"_s)});
        store->save();
    }
    [[nodiscard]] Server at(qsizetype index) const { return store->servers()[index]; }
    [[nodiscard]] ServerDropDelegate over(const Server& target) { return {target, *store, ui}; }
    [[nodiscard]] QString order() const { return names().join(u' '); }
    [[nodiscard]] QString savedOrder() const {
        const auto servers = decodeServers(read(u"servers.json"_s));
        QStringList saved;
        for (const Server& server : std::get<QList<Server>>(servers))
            saved += server.name;
        return saved.join(u' ');
    }
};

} // namespace

class DropDelegateTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void reorders_data() {
        QTest::addColumn<int>("dragged");
        QTest::addColumn<int>("target");
        QTest::addColumn<QString>("order");
        QTest::newRow("third onto first") << 2 << 0 << u"3 1 2 4 5"_s;
        QTest::newRow("first onto third") << 0 << 2 << u"2 3 1 4 5"_s;
        QTest::newRow("last onto first") << 4 << 0 << u"5 1 2 3 4"_s;
        QTest::newRow("onto the next") << 3 << 4 << u"1 2 3 5 4"_s;
        QTest::newRow("onto itself") << 1 << 1 << u"1 2 3 4 5"_s;
    }
    void reorders() {
        QFETCH(int, dragged);
        QFETCH(int, target);
        QFETCH(QString, order);
        Fleet fleet;
        fleet.ui.setDraggedServerId(fleet.at(dragged).id);
        fleet.over(fleet.at(target)).dropEntered();
        QCOMPARE(fleet.order(), order);
    }

    void passingOverSeveral() {
        Fleet fleet;
        const QList<Server> targets = fleet.store->servers().sliced(1, 3);
        fleet.ui.setDraggedServerId(fleet.at(0).id);
        const QStringList orders{u"2 1 3 4 5"_s, u"2 3 1 4 5"_s, u"2 3 4 1 5"_s};
        for (qsizetype passed = 0; passed < targets.size(); ++passed) {
            fleet.over(targets[passed]).dropEntered();
            QCOMPARE(fleet.order(), orders[passed]);
        }
    }

    void changesNothing() {
        Fleet fleet;
        fleet.over(fleet.at(0)).dropEntered(); // nothing is dragged
        QCOMPARE(fleet.order(), u"1 2 3 4 5"_s);
        const Server gone = fleet.at(4);
        fleet.store->removeServer(gone.id);
        fleet.ui.setDraggedServerId(gone.id);
        fleet.over(fleet.at(0)).dropEntered();
        fleet.ui.setDraggedServerId(fleet.at(1).id);
        fleet.over(gone).dropEntered();
        QCOMPARE(fleet.order(), u"1 2 3 4"_s);
    }

    void savesOnDropOnly() {
        Fleet fleet;
        fleet.ui.setDraggedServerId(fleet.at(2).id);
        const ServerDropDelegate target = fleet.over(fleet.at(0));
        target.dropEntered();
        QCOMPARE(target.dropUpdated(), Qt::MoveAction);
        target.dropExited();
        QCOMPARE(fleet.savedOrder(), u"1 2 3 4 5"_s);
        QVERIFY(target.performDrop());
        QCOMPARE(fleet.savedOrder(), u"3 1 2 4 5"_s);
        QVERIFY(!fleet.ui.draggedServerId());
    }

    void endsOnNoCard() {
        Fleet fleet;
        CardActions actions(*fleet.store, fleet.ui, ViewCollaborators());
        const auto card = [&fleet](qsizetype index) {
            return serverCardContent(fleet.at(index), {});
        };
        actions.beginDrag(card(0));
        actions.dragEntered(card(1));
        actions.endDrag();
        QVERIFY(!fleet.ui.draggedServerId());
        QCOMPARE(fleet.savedOrder(), u"2 1 3 4 5"_s);
    }
};

QTEST_GUILESS_MAIN(DropDelegateTest)
#include "tst_dropdelegate.moc"
