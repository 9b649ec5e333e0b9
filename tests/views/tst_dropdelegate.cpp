#include "StoreRig.h"
#include "card/ServerDropDelegate.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

/// Five servers, 1 to 5.
struct Fleet : StoreRig {
    UIState ui;
    Fleet() { startWith(numbered(5)); }
    [[nodiscard]] Server at(qsizetype index) const { return store->servers()[index]; }
    [[nodiscard]] ServerDropDelegate over(const Server& target) { return {target, *store, ui}; }
    [[nodiscard]] QString order() const { return names().join(u' '); }
};

} // namespace

class DropDelegateTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
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
        fleet.ui.setDraggedServerId(fleet.at(0).id);
        fleet.over(fleet.at(0)).dropEntered();
        QCOMPARE(fleet.order(), u"1 2 3 4 5"_s);
        const Server gone = fleet.at(4);
        fleet.store->removeServer(gone.id);
        fleet.ui.setDraggedServerId(gone.id);
        fleet.over(fleet.at(0)).dropEntered();
        fleet.ui.setDraggedServerId(fleet.at(1).id);
        fleet.over(gone).dropEntered();
        QCOMPARE(fleet.order(), u"1 2 3 4"_s);
    }
};

QTEST_GUILESS_MAIN(DropDelegateTest)
#include "tst_dropdelegate.moc"
