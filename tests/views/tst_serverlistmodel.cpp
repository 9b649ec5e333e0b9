#include "../computer/SampleComputer.h"
#include "ServerListModel.h"
#include "StoreRig.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

struct Fixture : StoreRig {
    UIState ui;
    SampleComputer sample;
    std::unique_ptr<ServerListModel> model;
    std::unique_ptr<QAbstractItemModelTester> tester;

    explicit Fixture(const QList<Server>& servers) {
        startWith(servers);
        model = std::make_unique<ServerListModel>(*store, ui, sample.computer);
        tester = std::make_unique<QAbstractItemModelTester>(model.get(),
                                                            QAbstractItemModelTester::FailureReportingMode::QtTest);
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
        Fixture fleet(StoreRig::numbered(12));
        const QSignalSpy resets(fleet.model.get(), &QAbstractItemModel::modelReset);
        QRandomGenerator random(7);
        for (int round = 0; round < 300; ++round) {
            QList<Server> servers = fleet.store->servers();
            const auto place = [&] {
                return random.bounded(std::max<qsizetype>(servers.size(), 1));
            };
            switch (servers.isEmpty() ? 0 : random.bounded(6)) {
            case 0:
                servers.insert(place(), StoreRig::server(u"new %1"_s.arg(round)));
                break;
            case 1:
                servers.removeAt(place());
                break;
            case 2:
                servers.insert(place(), servers[place()]); // a second row of the same id
                break;
            case 3:
                std::shuffle(servers.begin(), servers.end(), random);
                break;
            case 4:
                servers[place()].name = u"renamed %1"_s.arg(round);
                break;
            default:
                servers.move(place(), place());
            }
            fleet.store->setServers(servers);
            if (random.bounded(3) > 0) // several changes may fall in one turn
                QCoreApplication::processEvents();
            if (fleet.model->rowCount() == servers.size() && fleet.shownNames() != fleet.names())
                QCoreApplication::processEvents();
        }
        QCoreApplication::processEvents();
        QCOMPARE(fleet.shownNames(), fleet.names());
        QVERIFY(resets.isEmpty());
    }

    void oneMoveForOneMove() {
        Fixture fleet(StoreRig::numbered(10));
        QSignalSpy moves(fleet.model.get(), &QAbstractItemModel::rowsMoved);
        const QSignalSpy changes(fleet.model.get(), &QAbstractItemModel::dataChanged);
        for (const auto& [from, to] : {std::pair(3, 2), {3, 4}, {9, 0}, {0, 9}}) {
            fleet.store->moveServer(from, to);
            QCoreApplication::processEvents();
            QCOMPARE(fleet.shownNames(), fleet.names());
            QCOMPARE(moves.count(), 1);
            moves.clear();
            QVERIFY(changes.isEmpty());
        }
    }

    void sharedIdsAreToldApart() {
        QList<Server> servers = StoreRig::numbered(3);
        servers[2].id = servers[0].id;
        Fixture fleet(servers);
        servers[2].name = u"third"_s;
        QSignalSpy changes(fleet.model.get(), &QAbstractItemModel::dataChanged);
        fleet.store->setServers(servers);
        QCoreApplication::processEvents();
        QCOMPARE(fleet.shownNames(), QStringList({u"1"_s, u"2"_s, u"third"_s}));
        QCOMPARE(changes.count(), 1);
        QCOMPARE(changes[0][0].toModelIndex().row(), 2);
        servers.removeFirst();
        fleet.store->setServers(servers);
        QCoreApplication::processEvents();
        QCOMPARE(fleet.shownNames(), QStringList({u"2"_s, u"third"_s}));
    }

    void coalescesAThousandResults() {
        Fixture fleet(StoreRig::numbered(1000));
        QSignalSpy changes(fleet.model.get(), &QAbstractItemModel::dataChanged);
        QList<Server> servers = fleet.store->servers();
        for (qsizetype part = 0; part < 20; ++part) {
            for (qsizetype row = 0; row < servers.size(); ++row) {
                if (row == 499)
                    continue;
                servers[row].metrics.emplace();
                servers[row].metrics->latencyMs = part;
            }
            fleet.store->setServers(servers);
        }
        QVERIFY(changes.isEmpty());
        QCoreApplication::processEvents();
        QCOMPARE(changes.count(), 999);
        QVERIFY(
            std::ranges::none_of(changes, [](const auto& change) { return change[0].toModelIndex().row() == 499; }));
        QCOMPARE(fleet.card(999).latencyText, u"19 ms"_s);
    }

    void readsTheComputerOncePerChange() {
        QList<Server> servers = StoreRig::numbered(3);
        servers[1].isLocal = true;
        servers[1].metrics = ServerMetrics();
        Fixture fleet(servers);
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
        Fixture fleet(servers);
        QSignalSpy changes(fleet.model.get(), &QAbstractItemModel::dataChanged);
        fleet.ui.toggleExpanded(servers[1].id);
        QCoreApplication::processEvents();
        QCOMPARE(changes.count(), 1);
        QVERIFY(fleet.card(1).isExpanded && !fleet.card(0).isExpanded);
        fleet.ui.setRestartingContainerId(u"c2"_s);
        QCoreApplication::processEvents();
        QCOMPARE(changes.count(), 3); // every card that has containers
        QVERIFY(fleet.card(1).containers[0].restarting && !fleet.card(0).containers[0].restarting);
        QVERIFY(!fleet.card(0).containers[0].restartEnabled);
        fleet.ui.setDraggedServerId(servers[0].id);
        QCoreApplication::processEvents();
        QCOMPARE(changes.count(), 4);
        QVERIFY(fleet.card(0).isDragged);
    }
};

QTEST_GUILESS_MAIN(ServerListModelTest)
#include "tst_serverlistmodel.moc"
