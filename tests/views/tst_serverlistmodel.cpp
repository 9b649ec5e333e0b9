#include "../computer/SampleComputer.h"
#include "ServerListModel.h"
#include "StoreRig.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

struct ListRig : StoreRig {
    UIState ui;
    SampleComputer sample;
    std::unique_ptr<ServerListModel> model;
    std::unique_ptr<QAbstractItemModelTester> tester;
    std::unique_ptr<QSignalSpy> changes; ///< of rows in place

    explicit ListRig(const QList<Server>& servers) {
        startWith(servers);
        model = std::make_unique<ServerListModel>(*store, ui, sample.computer);
        tester = std::make_unique<QAbstractItemModelTester>(model.get(),
                                                            QAbstractItemModelTester::FailureReportingMode::QtTest);
        changes = std::make_unique<QSignalSpy>(model.get(), &QAbstractItemModel::dataChanged);
    }
    /// The rows that have changed since the last call, once the event loop has turned.
    [[nodiscard]] QList<int> changedRows() const {
        QCoreApplication::processEvents();
        QList<int> rows;
        while (!changes->isEmpty())
            rows += changes->takeFirst()[0].toModelIndex().row();
        return rows;
    }
    [[nodiscard]] ServerCardContent card(int row) const {
        return model->index(row).data(ServerListModel::ContentRole).value<ServerCardContent>();
    }
    [[nodiscard]] QStringList shownNames() const {
        QStringList names;
        for (int row = 0; row < model->rowCount(); ++row)
            names += card(row).name;
        return names;
    }
};

} // namespace

class ServerListModelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void followsRandomChanges() {
        ListRig fleet(StoreRig::numbered(12));
        const QSignalSpy resets(fleet.model.get(), &QAbstractItemModel::modelReset);
        QRandomGenerator random(7);
        for (int round = 0; round < 300; ++round) {
            QList<Server> servers = fleet.store->servers();
            const auto place = [&] {
                return random.bounded(std::max<qsizetype>(servers.size(), 1));
            };
            const int change = servers.isEmpty() ? 0 : random.bounded(7);
            if (change == 0)
                servers.insert(place(), StoreRig::server(u"new %1"_s.arg(round)));
            else if (change == 1)
                servers.removeAt(place());
            else if (change == 2)
                servers.insert(place(), servers[place()]); // a second row of the same id
            else if (change == 3)
                std::shuffle(servers.begin(), servers.end(), random);
            else if (change == 4)
                servers[place()].name = u"renamed %1"_s.arg(round);
            else if (change == 5)
                fleet.model->setFilter(FleetFilter(QStringList{u"1"_s, u"n 2"_s, {}}[random.bounded(3)]));
            else
                servers.move(place(), place());
            fleet.store->setServers(servers);
            if (random.bounded(3) > 0) // several changes may fall in one turn
                QCoreApplication::processEvents();
        }
        fleet.model->setFilter(FleetFilter(u"1"_s));
        QCoreApplication::processEvents();
        QVERIFY(fleet.store->servers().size() > fleet.model->rowCount());
        QCOMPARE(fleet.shownNames(), fleet.names().filter(u"1"_s));
        fleet.model->setFilter({});
        QCOMPARE(fleet.shownNames(), fleet.names());
        QVERIFY(resets.isEmpty());
    }

    void oneMoveForOneMove() {
        ListRig fleet(StoreRig::numbered(10));
        QSignalSpy moves(fleet.model.get(), &QAbstractItemModel::rowsMoved);
        for (const auto& [from, to] : {std::pair(3, 2), {3, 4}, {9, 0}, {0, 9}}) {
            fleet.store->moveServer(from, to);
            QCOMPARE(fleet.changedRows(), QList<int>());
            QCOMPARE(fleet.shownNames(), fleet.names());
            QCOMPARE(moves.count(), 1);
            moves.clear();
        }
    }

    void sharedIdsAreToldApart() {
        QList<Server> servers = StoreRig::numbered(3);
        servers[2].id = servers[0].id;
        ListRig fleet(servers);
        servers[2].name = u"third"_s;
        fleet.store->setServers(servers);
        QCOMPARE(fleet.changedRows(), QList<int>{2});
        QCOMPARE(fleet.shownNames(), QStringList({u"1"_s, u"2"_s, u"third"_s}));
    }

    void coalescesAThousandResults() {
        ListRig fleet(StoreRig::numbered(1000));
        QList<Server> servers = fleet.store->servers();
        QList<int> expected(servers.size());
        std::iota(expected.begin(), expected.end(), 0);
        expected.removeAt(499);
        for (int part = 0; part < 20; ++part) {
            for (const int row : expected) {
                servers[row].metrics.emplace();
                servers[row].metrics->latencyMs = part;
            }
            fleet.store->setServers(servers);
        }
        QVERIFY(fleet.changes->isEmpty());
        QCOMPARE(fleet.changedRows(), expected);
        QCOMPARE(fleet.card(999).latencyText, u"19 ms"_s);
    }

    void readsTheComputerOncePerChange() {
        QList<Server> servers = StoreRig::numbered(3);
        servers[1].isLocal = true;
        servers[1].metrics = ServerMetrics();
        ListRig fleet(servers);
        for (int look = 0; look < 5; ++look) {
            fleet.sample.letTimePass();
            QCOMPARE(fleet.card(1).temperatureText, u"41\u00b0C"_s);
        }
        QCOMPARE(fleet.sample.sensors.asked.size(), 1);
        fleet.store->moveServer(0, 2);
        fleet.store->moveServer(0, 2);
        QCoreApplication::processEvents();
        QCOMPARE(fleet.sample.sensors.asked.size(), 2);
    }

    void followsTheUserInterface() {
        QList<Server> servers = StoreRig::numbered(3);
        for (Server& server : servers) {
            server.metrics = ServerMetrics();
            server.metrics->containers = {ContainerInfo(u"c"_s + server.name, u"n"_s, {}, {}, u"running"_s, {})};
        }
        servers[2].metrics->containers.clear();
        ListRig fleet(servers);
        fleet.ui.toggleExpanded(servers[1].id);
        QCOMPARE(fleet.changedRows(), QList<int>{1});
        QVERIFY(fleet.card(1).isExpanded && !fleet.card(0).isExpanded);
        fleet.ui.setRestartingContainerId(u"c2"_s);
        QCOMPARE(fleet.changedRows(), QList<int>({0, 1})); // every card that has containers
        QVERIFY(fleet.card(1).containers[0].restarting && !fleet.card(0).containers[0].restarting);
        QVERIFY(!fleet.card(0).containers[0].restartEnabled);
        fleet.ui.setDraggedServerId(servers[0].id);
        QCOMPARE(fleet.changedRows(), QList<int>{0});
        QVERIFY(fleet.card(0).isDragged);
    }
};

QTEST_GUILESS_MAIN(ServerListModelTest)
#include "tst_serverlistmodel.moc"
