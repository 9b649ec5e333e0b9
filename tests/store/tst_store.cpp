#include "StoreRig.h"

#include <QSignalSpy>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

ServerMetrics metricsWithCpu(double cpu) {
    ServerMetrics metrics;
    metrics.cpuPercent = cpu;
    return metrics;
}

QList<Server> fleet(const QString& names) {
    QList<Server> servers;
    for (const QChar name : names)
        servers.append(StoreRig::server(name));
    return servers;
}

double cpuOf(const StoreRig& rig, qsizetype index) {
    const auto& metrics = rig.store->servers().at(index).metrics;
    return metrics ? metrics->cpuPercent : -1;
}

} // namespace

class StoreTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void startUpRefreshesFromTheEventLoop() {
        StoreRig rig;
        rig.write(u"servers.json"_s, encodeServers(fleet(u"AB"_s)).value());
        rig.start();
        QVERIFY(rig.probed.isEmpty());
        QCoreApplication::processEvents();
        QCOMPARE(rig.probed, (QStringList{u"A"_s, u"B"_s}));
        QVERIFY(rig.store->isRefreshing());
        QVERIFY(!rig.store->lastRefreshedAll());
    }

    void moves_data() {
        QTest::addColumn<char>("name");
        QTest::addColumn<bool>("up");
        QTest::addColumn<QString>("expected");
        QTest::newRow("C up") << 'C' << true << u"ACBD"_s;
        QTest::newRow("A down") << 'A' << false << u"BACD"_s;
        QTest::newRow("first up") << 'A' << true << u"ABCD"_s;
        QTest::newRow("last down") << 'D' << false << u"ABCD"_s;
        QTest::newRow("unknown up") << 'x' << true << u"ABCD"_s;
        QTest::newRow("unknown down") << 'x' << false << u"ABCD"_s;
    }
    void moves() {
        QFETCH(char, name);
        QFETCH(bool, up);
        QFETCH(QString, expected);
        StoreRig rig;
        const QList<Server> servers = fleet(u"ABCD"_s);
        rig.startWith(servers);
        QSignalSpy changed(rig.store.get(), &ServerStore::serversChanged);
        const QUuid id = name == 'x' ? QUuid::createUuid() : servers.at(name - 'A').id;
        const bool saved = rig.saves([&] { up ? rig.store->moveServerUp(id) : rig.store->moveServerDown(id); });
        QCOMPARE(rig.names().join(QString()), expected);
        QCOMPARE(saved, expected != u"ABCD"_s);
        QCOMPARE(changed.size(), saved ? 1 : 0);
    }

    void edits() {
        StoreRig rig;
        const QList<Server> servers = fleet(u"AB"_s);
        rig.startWith(servers);
        ServerStore& store = *rig.store;
        QSignalSpy listChanged(&store, &ServerStore::serversChanged);
        QSignalSpy entryChanged(&store, &ServerStore::serverChanged);

        Server paused = servers.at(1);
        paused.isEnabled = false;
        QVERIFY(rig.saves([&] { store.updateServer(paused); }));
        QCOMPARE(*store.server(paused.id), paused);
        QCOMPARE(entryChanged.takeFirst().at(0).toUuid(), paused.id);
        QVERIFY(!rig.saves([&] { store.updateServer(StoreRig::server(u"unknown"_s)); }));
        QVERIFY(entryChanged.isEmpty() && listChanged.isEmpty());

        QVERIFY(rig.saves([&] { store.removeServer(QUuid::createUuid()); }));
        QVERIFY(listChanged.isEmpty());
        QVERIFY(rig.saves([&] { store.removeServer(servers.at(0).id); }));
        QCOMPARE(rig.names(), QStringList{u"B"_s});
        QCOMPARE(listChanged.size(), 1);

        QVERIFY(!rig.saves([&] {
            store.setServers(servers);
            store.moveServer(0, 1);
            store.moveServer(0, 2);
            store.setSettings(AppSettings());
        }));
        QCOMPARE(rig.names(), (QStringList{u"B"_s, u"A"_s}));
        QVERIFY(rig.probed.isEmpty()); // no edit but adding starts a probe
    }

    void addedServerIsSavedThenProbed() {
        StoreRig rig;
        rig.startWith(fleet(u"A"_s));
        QVERIFY(rig.saves([&] { rig.store->addServer(StoreRig::server(u"new"_s)); }));
        QCOMPARE(rig.names().last(), u"new"_s);
        QTRY_COMPARE(rig.probed, QStringList{u"new"_s});
        QVERIFY(!rig.store->isRefreshing());
        QVERIFY(rig.saves([&] { rig.probes.at(u"new"_s).answer(metricsWithCpu(5)); }));
        QCOMPARE(cpuOf(rig, 1), 5.0);
    }

    void rowsWithOneId() {
        StoreRig rig;
        QList<Server> servers = fleet(u"ABC"_s);
        servers[2].id = servers[0].id;
        rig.startWith(servers);
        Server renamed = servers.at(2);
        renamed.name = u"R"_s;
        rig.store->updateServer(renamed);
        QCOMPARE(rig.names().join(QString()), u"RBC"_s);
        rig.store->moveServerDown(renamed.id);
        QCOMPARE(rig.names().join(QString()), u"BRC"_s);
        rig.store->removeServer(renamed.id);
        QCOMPARE(rig.names().join(QString()), u"B"_s);
    }

    void fullRefreshAppliesResultsAsTheyFinish() {
        StoreRig rig;
        QList<Server> servers = fleet(u"ABCD"_s);
        servers[1].isEnabled = false;
        servers[1].metrics = metricsWithCpu(77);
        rig.startWith(servers);
        ServerStore& store = *rig.store;
        const auto lastTime = store.lastRefreshedAll();
        rig.now = Instant{2000};
        QFuture<void> cycle = store.refreshAll();
        QCOMPARE(rig.probed, (QStringList{u"A"_s, u"C"_s, u"D"_s}));

        QVERIFY(!rig.saves([&] {
            rig.probes.at(u"D"_s).answer(metricsWithCpu(4));
            QCOMPARE(cpuOf(rig, 3), 4.0);
            QCOMPARE(cpuOf(rig, 0), -1.0);

            QVERIFY(store.refreshAll().isFinished()); // dropped
            QCOMPARE(rig.probed.size(), 3);
            rig.probes.at(u"A"_s).answer(metricsWithCpu(1));
        }));
        QVERIFY(store.isRefreshing() && !cycle.isFinished());
        QCOMPARE(store.lastRefreshedAll(), lastTime);

        rig.now = Instant{2050};
        bool busyWhenStamped = false;
        connect(&store, &ServerStore::lastRefreshedAllChanged, this, [&] { busyWhenStamped = store.isRefreshing(); });
        QVERIFY(rig.saves([&] { rig.probes.at(u"C"_s).answer(metricsWithCpu(3)); }));
        QVERIFY(!store.isRefreshing() && cycle.isFinished() && busyWhenStamped);
        QCOMPARE(store.lastRefreshedAll(), Instant{2050});
        QCOMPARE(cpuOf(rig, 1), 77.0); // paused: as it was
        QCOMPARE(std::get<QList<Server>>(decodeServers(rig.read(u"servers.json"_s))), store.servers());
    }

    void largeFleetIsLaunchedInTurns() {
        StoreRig rig;
        rig.startWith(fleet(u"A"_s));
        QList<Server> servers;
        for (int i = 0; i < 999; ++i)
            servers.append(StoreRig::server(QString::number(i)));
        rig.store->setServers(servers);
        QFuture<void> cycle = rig.store->refreshAll();
        QVERIFY(!rig.probed.isEmpty());
        rig.probes.at(u"0"_s).answer(metricsWithCpu(1)); // one that answers before the last is launched
        QTRY_COMPARE(rig.probed.size(), 999);
        for (int i = 1; i < 999; ++i) {
            QVERIFY(!cycle.isFinished());
            rig.probes.at(QString::number(i)).answer(metricsWithCpu(1));
        }
        QVERIFY(cycle.isFinished());
        for (qsizetype i = 0; i < 999; ++i)
            QCOMPARE(cpuOf(rig, i), 1.0);
    }

    void fleetChangesDuringACycle() {
        StoreRig rig;
        const QList<Server> servers = fleet(u"ABC"_s);
        rig.startWith(servers);
        ServerStore& store = *rig.store;
        store.refreshAll();
        store.removeServer(servers.at(0).id);
        store.moveServerUp(servers.at(2).id);
        Server paused = servers.at(1);
        paused.isEnabled = false;
        store.updateServer(paused);
        QSignalSpy entryChanged(&store, &ServerStore::serverChanged);
        rig.probes.at(u"A"_s).answer(ServerMetrics::offline(u"gone"_s));
        QVERIFY(entryChanged.isEmpty() && rig.alerts.isEmpty());
        rig.probes.at(u"B"_s).answer(ServerMetrics::offline(u"down"_s)); // taken, but no alert: paused by now
        rig.probes.at(u"C"_s).answer(ServerMetrics::offline(u"down"_s));
        QCOMPARE(rig.names().join(QString()), u"CB"_s);
        QVERIFY(store.servers().at(0).metrics && store.servers().at(1).metrics);
        QCOMPARE(rig.alerts, QStringList{u"-offline loud"_s});
        QVERIFY(!store.isRefreshing());
    }

    void singleRefresh() {
        StoreRig rig;
        QList<Server> servers = fleet(u"AB"_s);
        servers[0].isEnabled = false;
        rig.startWith(servers);
        ServerStore& store = *rig.store;
        AppSettings settings;
        settings.soundAlerts = false;
        store.setSettings(settings);
        const auto stamp = store.lastRefreshedAll();
        rig.now = Instant{9000};

        QFuture<void> refresh = store.refreshServer(servers.at(0)); // paused, and probed all the same
        QVERIFY(!store.isRefreshing() && !refresh.isFinished());
        QVERIFY(rig.saves([&] { rig.probes.at(u"A"_s).answer(ServerMetrics::offline(u"x"_s)); }));
        QVERIFY(refresh.isFinished() && rig.alerts.isEmpty());
        QVERIFY(store.servers().at(0).metrics.has_value());

        store.refreshServer(servers.at(1));
        rig.probes.at(u"B"_s).answer(ServerMetrics::offline(u"x"_s));
        QCOMPARE(rig.alerts, QStringList{u"-offline"_s}); // without sound
        QCOMPARE(store.lastRefreshedAll(), stamp);

        store.refreshServer(servers.at(1));
        store.removeServer(servers.at(1).id);
        QVERIFY(!rig.saves([&] { rig.probes.at(u"B"_s).answer(ServerMetrics()); }));
    }

    void singleAndFullRefreshMeet() {
        StoreRig rig;
        const QList<Server> servers = fleet(u"A"_s);
        rig.startWith(servers);
        rig.store->refreshAll();
        auto full = std::move(rig.probes.at(u"A"_s));
        rig.store->refreshServer(servers.at(0));
        rig.probes.at(u"A"_s).answer(metricsWithCpu(1));
        QCOMPARE(cpuOf(rig, 0), 1.0);
        full.answer(metricsWithCpu(2));
        QCOMPARE(cpuOf(rig, 0), 2.0); // the one applied last stays
    }

    void cyclesEndWhateverTheProbesDo() {
        StoreRig rig;
        rig.startWith(fleet(u"A"_s));
        rig.store->refreshAll();
        rig.probes.clear(); // the probe is cancelled
        QTRY_VERIFY(!rig.store->isRefreshing());

        rig.store->setServers({});
        rig.now = Instant{3000};
        QVERIFY(rig.saves([&] { rig.store->refreshAll(); }));
        QCOMPARE(rig.store->lastRefreshedAll(), Instant{3000});
    }

    void storeMayDieWhileProbesRun() {
        StoreRig rig;
        const QList<Server> servers = fleet(u"A"_s);
        rig.startWith(servers);
        QFuture<void> all = rig.store->refreshAll();
        QPromise<ServerMetrics> promise = std::move(rig.probes.at(u"A"_s).promise);
        QFuture<void> single = rig.store->refreshServer(servers.at(0));
        rig.store->addServer(StoreRig::server(u"B"_s));
        rig.store.reset();
        promise.addResult(ServerMetrics());
        promise.finish();
        rig.probes.at(u"A"_s).answer(ServerMetrics());
        QVERIFY(!rig.probed.contains(u"B"_s));
        QTRY_VERIFY(all.isFinished() && single.isFinished());
    }

    void announcesBeforeTheChange() {
        StoreRig rig;
        rig.startWith(fleet(u"A"_s));
        ServerStore& store = *rig.store;
        QStringList log;
        const auto state = [&] {
            return u"%1 %2 %3"_s.arg(rig.names().join(QString())).arg(store.isRefreshing()).arg(cpuOf(rig, 0));
        };
        connect(&store, &ServerStore::objectWillChange, this, [&] { log.append(u"will "_s + state()); });
        connect(&store, &ServerStore::serversChanged, this, [&] { log.append(u"list "_s + state()); });
        connect(&store, &ServerStore::serverChanged, this, [&] { log.append(u"entry "_s + state()); });
        connect(&store, &ServerStore::isRefreshingChanged, this, [&] { log.append(u"busy "_s + state()); });
        store.refreshAll();
        store.addServer(StoreRig::server(u"B"_s));
        rig.probes.at(u"A"_s).answer(metricsWithCpu(1));
        QCOMPARE(log.mid(0, 8),
                 (QStringList{u"will A 0 -1"_s, u"busy A 1 -1"_s, u"will A 1 -1"_s, u"list AB 1 -1"_s,
                              u"will AB 1 -1"_s, u"entry AB 1 1"_s, u"will AB 1 1"_s, u"will AB 1 1"_s}));
        QCOMPARE(log.mid(8), QStringList{u"busy AB 0 1"_s});
    }

    void timerPeriod_data() {
        QTest::addColumn<qint64>("seconds");
        QTest::addColumn<int>("milliseconds");
        QTest::newRow("minimum") << qint64(5) << 10'000;
        QTest::newRow("negative") << std::numeric_limits<qint64>::min() << 10'000;
        QTest::newRow("usual") << qint64(60) << 60'000;
        QTest::newRow("as long as a timer goes") << std::numeric_limits<qint64>::max() << 2'147'483'000;
    }
    void timerPeriod() {
        QFETCH(qint64, seconds);
        QFETCH(int, milliseconds);
        StoreRig rig;
        rig.startWith(fleet(u"A"_s));
        AppSettings settings;
        settings.refreshIntervalSeconds = seconds;
        rig.store->setSettings(settings);
        const QList<QTimer*> timers = rig.store->findChildren<QTimer*>();
        QCOMPARE(timers.size(), 1);
        QCOMPARE(timers.at(0)->interval(), 30'000); // settings alone do not touch it
        rig.store->setupTimer();
        QCOMPARE(timers.at(0)->interval(), milliseconds);
        QVERIFY(timers.at(0)->isActive() && !timers.at(0)->isSingleShot());
        QVERIFY(rig.probed.isEmpty());
        QVERIFY(QMetaObject::invokeMethod(timers.at(0), "timeout"));
        QCOMPARE(rig.probed, QStringList{u"A"_s});
    }
};

QTEST_GUILESS_MAIN(StoreTest)
#include "tst_store.moc"
