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
        rig.write(u"servers.json"_s, encodeServers(StoreRig::fleet(u"AB")).value());
        rig.start();
        QVERIFY(rig.probed.isEmpty());
        QCoreApplication::processEvents();
        QCOMPARE(rig.probed, (QStringList{u"A"_s, u"B"_s}));
        QVERIFY(rig.store->isRefreshing());
        QVERIFY(!rig.store->lastRefreshedAll());
    }

    void moves() {
        const QList<Server> servers = StoreRig::fleet(u"ABCD");
        const auto moved = [&servers](const QUuid& id, bool up) {
            StoreRig rig;
            rig.startWith(servers);
            const QSignalSpy changed(rig.store.get(), &ServerStore::serversChanged);
            const bool saved = rig.saves([&] { up ? rig.store->moveServerUp(id) : rig.store->moveServerDown(id); });
            return u"%1 %2 %3"_s.arg(rig.names().join(QString()), saved ? u"saved"_s : u"as it was"_s)
                .arg(changed.size());
        };
        QCOMPARE(moved(servers[2].id, true), u"ACBD saved 1"_s);
        QCOMPARE(moved(servers[0].id, false), u"BACD saved 1"_s);
        QCOMPARE(moved(servers[0].id, true), u"ABCD as it was 0"_s);
        QCOMPARE(moved(servers[3].id, false), u"ABCD as it was 0"_s);
        QCOMPARE(moved(QUuid::createUuid(), true), u"ABCD as it was 0"_s);
        QCOMPARE(moved(QUuid::createUuid(), false), u"ABCD as it was 0"_s);
    }

    void edits() {
        StoreRig rig;
        const QList<Server> servers = StoreRig::fleet(u"AB");
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
            store.editSettings([](AppSettings&) {}, ServerStore::Saving::later);
        }));
        QCOMPARE(rig.names(), (QStringList{u"B"_s, u"A"_s}));
        QVERIFY(rig.probed.isEmpty()); // no edit but adding starts a probe
    }

    void addedServerIsSavedThenProbed() {
        StoreRig rig;
        rig.startWith(StoreRig::fleet(u"A"));
        QVERIFY(rig.saves([&] { rig.store->addServer(StoreRig::server(u"new"_s)); }));
        QCOMPARE(rig.names().last(), u"new"_s);
        QTRY_COMPARE(rig.probed, QStringList{u"new"_s});
        QVERIFY(!rig.store->isRefreshing());
        QVERIFY(rig.saves([&] { rig.probes.at(u"new"_s).answer(metricsWithCpu(5)); }));
        QCOMPARE(cpuOf(rig, 1), 5.0);
    }

    void rowsWithOneId() {
        StoreRig rig;
        QList<Server> servers = StoreRig::fleet(u"ABC");
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
        QList<Server> servers = StoreRig::fleet(u"ABCD");
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
        connect(
            &store, &ServerStore::lastRefreshedAllChanged, this, [&] { busyWhenStamped = store.isRefreshing(); });
        QVERIFY(rig.saves([&] { rig.probes.at(u"C"_s).answer(metricsWithCpu(3)); }));
        QVERIFY(!store.isRefreshing() && cycle.isFinished() && busyWhenStamped);
        QCOMPARE(store.lastRefreshedAll(), Instant{2050});
        QCOMPARE(cpuOf(rig, 1), 77.0); // paused: as it was
        QCOMPARE(std::get<QList<Server>>(decodeServers(rig.read(u"servers.json"_s))), store.servers());
    }

    void largeFleetIsLaunchedInTurns() {
        StoreRig rig;
        rig.startWith(StoreRig::fleet(u"A"));
        rig.store->setServers(StoreRig::numbered(999));
        QFuture<void> cycle = rig.store->refreshAll();
        QVERIFY(!rig.probed.isEmpty());
        rig.probes.at(u"1"_s).answer(metricsWithCpu(1)); // one that answers before the last is launched
        QTRY_COMPARE(rig.probed.size(), 999);
        for (int i = 2; i <= 999; ++i) {
            QVERIFY(!cycle.isFinished());
            rig.probes.at(QString::number(i)).answer(metricsWithCpu(1));
        }
        QVERIFY(cycle.isFinished());
        for (qsizetype i = 0; i < 999; ++i)
            QCOMPARE(cpuOf(rig, i), 1.0);
    }

    void fleetChangesDuringACycle() {
        StoreRig rig;
        const QList<Server> servers = StoreRig::fleet(u"ABC");
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
        rig.probes.at(u"B"_s).answer(ServerMetrics::offline(u"down"_s)); // paused by now: applied, but no alert
        rig.probes.at(u"C"_s).answer(ServerMetrics::offline(u"down"_s));
        QCOMPARE(rig.names().join(QString()), u"CB"_s);
        QVERIFY(store.servers().at(0).metrics && store.servers().at(1).metrics);
        QCOMPARE(rig.alerts, QStringList{u"-offline loud"_s});
        QVERIFY(!store.isRefreshing());
    }

    void singleRefresh() {
        StoreRig rig;
        QList<Server> servers = StoreRig::fleet(u"AB");
        servers[0].isEnabled = false;
        rig.startWith(servers);
        ServerStore& store = *rig.store;
        store.editSettings([](AppSettings& settings) { settings.soundAlerts = false; }, ServerStore::Saving::later);
        const auto stamp = store.lastRefreshedAll();
        rig.now = Instant{9000};

        QFuture<void> refresh = store.refreshServer(servers.at(0)); // probed although paused
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
        const QList<Server> servers = StoreRig::fleet(u"A");
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
        rig.startWith(StoreRig::fleet(u"A"));
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
        const QList<Server> servers = StoreRig::fleet(u"A");
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
        rig.startWith(StoreRig::fleet(u"A"));
        ServerStore& store = *rig.store;
        QStringList log;
        const auto state = [&] {
            return u"%1 %2 %3"_s.arg(rig.names().join(QString())).arg(store.isRefreshing()).arg(cpuOf(rig, 0));
        };
        connect(
            &store, &ServerStore::objectWillChange, this, [&] { log.append(u"will "_s + state()); });
        connect(
            &store, &ServerStore::serversChanged, this, [&] { log.append(u"list "_s + state()); });
        connect(
            &store, &ServerStore::serverChanged, this, [&] { log.append(u"entry "_s + state()); });
        connect(&store, &ServerStore::isRefreshingChanged, this, [&] { log.append(u"busy "_s + state()); });
        store.refreshAll();
        store.addServer(StoreRig::server(u"B"_s));
        rig.probes.at(u"A"_s).answer(metricsWithCpu(1));
        QCOMPARE(log.mid(0, 8),
                 (QStringList{u"will A 0 -1"_s, u"busy A 1 -1"_s, u"will A 1 -1"_s, u"list AB 1 -1"_s,
                              u"will AB 1 -1"_s, u"entry AB 1 1"_s, u"will AB 1 1"_s, u"will AB 1 1"_s}));
        QCOMPARE(log.mid(8), QStringList{u"busy AB 0 1"_s});
    }

    void settingsEdits() {
        StoreRig rig;
        rig.startWith(StoreRig::fleet(u"A"));
        ServerStore& store = *rig.store;
        auto* timer = store.findChild<QTimer*>();
        QStringList log;
        const auto logThreshold = [&](const QString& event) {
            return [&, event] {
                log.append(event + QString::number(store.settings().alertDiskThresholdPercent));
            };
        };
        connect(&store, &ServerStore::objectWillChange, this, logThreshold(u"will "_s));
        connect(&store, &ServerStore::settingsChanged, this, logThreshold(u"has "_s));
        using enum ServerStore::Saving;
        for (const auto& [saving, interval, restarts] :
             {std::tuple(now, 30, false), {now, 60, true}, {later, 60, false}, {later, 30, true}}) {
            timer->setInterval(1'000'000); // what a restart replaces
            store.editSettings([](AppSettings& settings) { settings.alertDiskThresholdPercent = 90; }, later);
            log.clear();
            const bool saved = rig.saves([&, saving = saving, interval = interval] {
                store.editSettings(
                    [=](AppSettings& settings) {
                        settings.alertDiskThresholdPercent = 80;
                        settings.refreshIntervalSeconds = interval;
                    },
                    saving);
            });
            QCOMPARE(log, (QStringList{u"will 90"_s, u"has 80"_s}));
            QCOMPARE(saved, saving == now);
            QCOMPARE(timer->interval() != 1'000'000, restarts);
        }
    }

    void timerPeriod() {
        StoreRig rig;
        rig.startWith(StoreRig::fleet(u"A"));
        const QList<QTimer*> timers = rig.store->findChildren<QTimer*>();
        QCOMPARE(timers.size(), 1);
        using Limits = std::numeric_limits<qint64>;
        for (const auto& [seconds, milliseconds] :
             {std::pair(qint64{60}, 60'000), {5, 10'000}, {Limits::max(), 2'147'483'000}, {Limits::min(), 10'000}}) {
            rig.store->editSettings([=](AppSettings& settings) { settings.refreshIntervalSeconds = seconds; });
            QCOMPARE(timers.at(0)->interval(), milliseconds);
        }
        QVERIFY(timers.at(0)->isActive() && !timers.at(0)->isSingleShot());
        QVERIFY(rig.probed.isEmpty());
        QVERIFY(QMetaObject::invokeMethod(timers.at(0), "timeout"));
        QCOMPARE(rig.probed, QStringList{u"A"_s});
    }
};

QTEST_GUILESS_MAIN(StoreTest)
#include "tst_store.moc"
