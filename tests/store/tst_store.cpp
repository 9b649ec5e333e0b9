#include "FleetTrends.h"
#include "StoreRig.h"

#include <QSignalSpy>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
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
    void moves() {
        const QList<Server> servers = StoreRig::fleet(u"ABCD");
        const QUuid unknown = QUuid::createUuid();
        for (const auto& [id, move, expected] :
             {std::tuple(servers[2].id, &ServerStore::moveServerUp, u"ACBD saved 1"_s),
              {servers[0].id, &ServerStore::moveServerDown, u"BACD saved 1"_s},
              {servers[0].id, &ServerStore::moveServerUp, u"ABCD as it was 0"_s},
              {servers[3].id, &ServerStore::moveServerDown, u"ABCD as it was 0"_s},
              {unknown, &ServerStore::moveServerUp, u"ABCD as it was 0"_s},
              {unknown, &ServerStore::moveServerDown, u"ABCD as it was 0"_s}}) {
            StoreRig rig;
            rig.startWith(servers);
            const QSignalSpy changed(rig.store.get(), &ServerStore::serversChanged);
            const bool saved = rig.saves([&, id = id, move = move] { (*rig.store.*move)(id); });
            const QString outcome = saved ? u"saved"_s : u"as it was"_s;
            QCOMPARE(u"%1 %2 %3"_s.arg(rig.names().join(QString()), outcome).arg(changed.size()), expected);
        }
    }

    void edits() {
        StoreRig rig(u"AB");
        const QList<Server> servers = rig.store->servers();
        ServerStore& store = *rig.store;
        QSignalSpy listChanged(&store, &ServerStore::serversChanged);
        QSignalSpy entryChanged(&store, &ServerStore::serverChanged);

        Server paused = servers.at(1);
        paused.isEnabled = false;
        paused.metrics = metricsWithCpu(9);
        QVERIFY(rig.saves([&] { store.updateServer(paused); }));
        QCOMPARE(*store.server(paused.id), paused);
        QCOMPARE(entryChanged.takeFirst().at(0).toUuid(), paused.id);
        QVERIFY(!rig.saves([&] { store.updateServer(StoreRig::server(u"unknown"_s)); }));
        QVERIFY(entryChanged.isEmpty() && listChanged.isEmpty());

        QVERIFY(rig.saves([&] { store.removeServer(QUuid::createUuid()); }) && listChanged.isEmpty());
        QVERIFY(rig.saves([&] { store.removeServer(servers.at(0).id); }));
        QCOMPARE(rig.names(), QStringList{u"B"_s});
        QCOMPARE(listChanged.size(), 1);

        QVERIFY(!rig.saves([&] {
            store.setServers(servers);
            store.moveServer(0, 1);
            store.moveServer(0, 2);
        }));
        QCOMPARE(rig.names(), (QStringList{u"B"_s, u"A"_s}));
        QVERIFY(rig.probed.isEmpty()); // no edit but adding starts a probe
    }

    void addedServerIsSavedThenProbed() {
        StoreRig rig(u"A");
        QVERIFY(rig.saves([&] { rig.store->addServer(StoreRig::server(u"new"_s)); }));
        QCOMPARE(rig.names().last(), u"new"_s);
        QTRY_COMPARE(rig.probed, QStringList{u"new!"_s});
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
            QCOMPARE(std::pair(cpuOf(rig, 0), cpuOf(rig, 3)), std::pair(-1.0, 4.0));
            QVERIFY(store.refreshAll().isFinished()); // dropped
            QCOMPARE(rig.probed.size(), 3);
            rig.probes.at(u"A"_s).answer(metricsWithCpu(1));
        }));
        QVERIFY(store.isRefreshing() && !cycle.isFinished());
        QCOMPARE(store.lastRefreshedAll(), lastTime);

        rig.now = Instant{2050};
        rig.steadyTime += 42s;
        QList<Server> saved;
        connect(
            &store, &ServerStore::isRefreshingChanged, this, [&] { saved = rig.storedFleet(); });
        QVERIFY(rig.saves([&] { rig.probes.at(u"C"_s).answer(metricsWithCpu(3)); }));
        QCOMPARE(saved, store.servers());
        QVERIFY(!store.isRefreshing() && cycle.isFinished());
        QCOMPARE(store.lastRefreshedAll(), Instant{2050});
        QCOMPARE(store.latestCycleTime(), 42s);
        QCOMPARE(cpuOf(rig, 1), 77.0); // paused: as it was
    }

    void largeFleetIsLaunchedInTurns() {
        StoreRig rig(u"A");
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
        QVERIFY(
            std::ranges::all_of(rig.store->servers(), [](const Server& server) { return server.metrics.has_value(); }));
    }

    void fleetChangesDuringACycle() {
        StoreRig rig(u"ABC");
        const QList<Server> servers = rig.store->servers();
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

    /// Of A, which is this computer, to F: each fails, answers with a disk that is 60 % full, or answers well. The same
    /// alert does not come twice, unless it is all anew.
    void alertsOfACycle() {
        QList<Server> servers = StoreRig::fleet(u"ABCDEF");
        servers[0].isLocal = true;
        StoreRig rig;
        rig.startWith(servers);
        rig.store->editSettings([](AppSettings& settings) { settings.alertDiskThresholdPercent = 60; });
        const QString one = u"-offline loud"_s;
        const QString disk = u"-disk loud"_s;
        const auto more = u"and 2 more servers need attention: E, F loud"_s;
        for (const auto& [results, hasRoute, anew, beforeTheLast, expected, isOffline] :
             {std::tuple(u"offfff", false, false, 0, QStringList(), true),
              {u"offffo", false, false, 0, {one, one, one, u"and 1 more server needs attention: E loud"_s}, false},
              {u"offfff", true, false, 0, {one}, false}, // F
              {u"offfff", true, true, 3, {one, one, one, more}, false},
              {u"foooof", false, true, 1, {one, one}, false},
              {u"dddddd",
               true,
               true,
               3,
               {disk, disk, disk, u"and 3 more servers need attention: D, E, F loud"_s},
               false},
              {u"ffffff", false, true, 1, {one}, true}}) {
            rig.alerts.clear();
            rig.hasDefaultRoute = hasRoute;
            if (anew)
                rig.claimed.clear();
            rig.store->refreshAll();
            for (qsizetype i = 0; i < servers.size(); ++i) {
                if (i == servers.size() - 1)
                    QCOMPARE(rig.alerts.size(), beforeTheLast);
                ServerMetrics metrics;
                metrics.diskTotalGB = 10;
                metrics.diskUsedGB = results[i] == u'd' ? 6 : 1;
                rig.probes.at(servers[i].name).answer(results[i] == u'f' ? ServerMetrics::offline({}) : metrics);
            }
            QCOMPARE(rig.alerts, expected);
            QCOMPARE(rig.store->isOffline(), isOffline);
        }
        rig.store->refreshServer(servers[0]);
        rig.probes.at(u"A"_s).answer({});
        QVERIFY(rig.store->isOffline());
        rig.store->refreshServer(servers[1]);
        rig.probes.at(u"B"_s).answer({});
        QVERIFY(!rig.store->isOffline());
    }

    /// Before it has heard of it, a process that takes the lead has what the last leader saved.
    void takesTheLeadOfTheLatestList() {
        StoreRig rig;
        rig.role = Role::follower;
        rig.start();
        rig.write(u"servers.json"_s, encodeServers(StoreRig::fleet(u"AB")).value());
        rig.store->setRole(Role::leader);
        QCOMPARE(rig.names(), (QStringList{u"A"_s, u"B"_s}));
    }

    void trendOfAnIdIsItsFirstRows() {
        QList<Server> servers = StoreRig::fleet(u"AB");
        servers[1].id = servers[0].id;
        for (Server& server : servers) {
            server.metrics.emplace();
            server.metrics->cpuPercent = server.name == u"A" ? 10 : 20;
            server.metrics->lastChecked = {60};
        }
        FleetTrends trends;
        trends.follow(servers);
        QCOMPARE(trends.trend(servers[0].id)->points(TrendFigure::cpu).constFirst().value, 10.0);
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
        QVERIFY(refresh.isFinished() && rig.alerts.isEmpty() && store.servers().at(0).metrics);

        store.refreshServer(servers.at(1));
        rig.probes.at(u"B"_s).answer(ServerMetrics::offline(u"x"_s));
        QCOMPARE(rig.alerts, QStringList{u"-offline"_s}); // without sound
        QCOMPARE(rig.sharedFor, std::nullopt);
        store.editSettings([](AppSettings& settings) { settings.shareConnections = true; });
        QCOMPARE(store.lastRefreshedAll(), stamp);

        store.refreshServer(servers.at(1));
        QVERIFY(rig.sharedFor == 60s);
        store.removeServer(servers.at(1).id);
        QVERIFY(!rig.saves([&] { rig.probes.at(u"B"_s).answer(ServerMetrics()); }));
    }

    void followerOnlyShows() {
        StoreRig rig;
        rig.role = Role::follower;
        rig.start();
        QVERIFY(rig.files().isEmpty() && rig.store->servers().isEmpty()); // nothing is seeded
        rig.write(u"servers.json"_s, encodeServers(StoreRig::fleet(u"AB")).value());
        QTRY_COMPARE(rig.names().join(QString()), u"AB"_s);
        const auto showsNothingElse = [&] {
            QCoreApplication::processEvents();
            return !rig.saves([&] {
                rig.store->refreshAll();
                rig.store->editSettings([](AppSettings& settings) { settings.soundAlerts = false; });
                if (rig.probes.contains(u"A"_s))
                    rig.probes.at(u"A"_s).answer(ServerMetrics::offline(u"down"_s));
            }) && rig.alerts.isEmpty() &&
                   !rig.store->servers().at(0).metrics;
        };
        QVERIFY(showsNothingElse() && rig.probed.isEmpty());

        QVERIFY(rig.saves([&] { rig.store->setRole(Role::leader); }));
        QCOMPARE(rig.storedFleet(), rig.store->servers());
        QVERIFY(!std::get<AppSettings>(decodeSettings(rig.read(u"settings.json"_s))).soundAlerts);
        QTRY_COMPARE(rig.probed.size(), 2);

        rig.store->setServers({rig.store->servers().at(0)});
        rig.store->setRole(Role::follower);
        QCOMPARE(readFile(rig.path(u"servers.json"_s)), encodeServers(rig.store->servers())); // saved by now
        QVERIFY(showsNothingElse());
    }

    void cyclesEndWhateverTheProbesDo() {
        StoreRig rig(u"A");
        rig.store->refreshAll();
        rig.probes.clear(); // the probe is cancelled
        QTRY_VERIFY(!rig.store->isRefreshing());

        rig.store->setServers({});
        rig.now = Instant{3000};
        QVERIFY(rig.saves([&] { rig.store->refreshAll(); }));
        QCOMPARE(rig.store->lastRefreshedAll(), Instant{3000});
    }

    void storeMayDieWhileProbesRun() {
        StoreRig rig(u"A");
        QFuture<void> all = rig.store->refreshAll();
        QPromise<ServerMetrics> promise = std::move(rig.probes.at(u"A"_s).promise);
        QFuture<void> single = rig.store->refreshServer(rig.store->servers().at(0));
        rig.store->addServer(StoreRig::server(u"B"_s));
        rig.store.reset();
        promise.addResult(ServerMetrics());
        promise.finish();
        rig.probes.at(u"A"_s).answer(ServerMetrics());
        QVERIFY(!rig.probed.contains(u"B"_s));
        QTRY_VERIFY(all.isFinished() && single.isFinished());
    }

    void announcesBeforeTheChange() {
        StoreRig rig(u"A");
        ServerStore& store = *rig.store;
        QStringList log;
        const auto logAs = [&](const QString& signal) {
            return [&, signal] {
                const QString names = rig.names().join(QString());
                const double threshold = store.settings().alertDiskThresholdPercent;
                log.append(
                    u"%1 %2 %3 %4 %5"_s.arg(signal, names).arg(store.isRefreshing()).arg(cpuOf(rig, 0)).arg(threshold));
            };
        };
        connect(&store, &ServerStore::objectWillChange, this, logAs(u"will"_s));
        connect(&store, &ServerStore::serversChanged, this, logAs(u"list"_s));
        connect(&store, &ServerStore::serverChanged, this, logAs(u"entry"_s));
        connect(&store, &ServerStore::isRefreshingChanged, this, logAs(u"busy"_s));
        connect(&store, &ServerStore::lastRefreshedAllChanged, this, logAs(u"stamp"_s));
        connect(&store, &ServerStore::settingsChanged, this, logAs(u"settings"_s));
        store.refreshAll();
        store.addServer(StoreRig::server(u"B"_s));
        rig.probes.at(u"A"_s).answer(metricsWithCpu(1));
        store.editSettings([](AppSettings& settings) { settings.alertDiskThresholdPercent = 80; });
        QCOMPARE(log,
                 (QStringList{u"will A 0 -1 90"_s, u"busy A 1 -1 90"_s, u"will A 1 -1 90"_s, u"list AB 1 -1 90"_s,
                              u"will AB 1 -1 90"_s, u"entry AB 1 1 90"_s, u"will AB 1 1 90"_s, u"stamp AB 1 1 90"_s,
                              u"will AB 1 1 90"_s, u"busy AB 0 1 90"_s, u"will AB 0 1 90"_s, u"settings AB 0 1 80"_s}));
    }

    void settingsEdits() {
        StoreRig rig(u"A");
        ServerStore& store = *rig.store;
        const QList<QTimer*> timers = store.findChildren<QTimer*>();
        QCOMPARE(timers.size(), 1);
        constexpr int asItWas = 1'000'000; // what a restart of the timer replaces
        using enum ServerStore::Saving;
        using Limits = std::numeric_limits<qint64>;
        for (const auto& [saving, seconds, milliseconds] : {std::tuple(now, qint64{30}, asItWas),
                                                            {now, 60, 60'000},
                                                            {later, 60, asItWas},
                                                            {later, 5, 10'000},
                                                            {later, Limits::max(), 2'147'483'000},
                                                            {now, Limits::min(), 10'000}}) {
            timers.first()->setInterval(asItWas);
            const auto edit = [seconds = seconds](AppSettings& settings) {
                settings.refreshIntervalSeconds = seconds;
            };
            QCOMPARE(rig.saves([&, saving = saving] { store.editSettings(edit, saving); }), saving == now);
            QCOMPARE(timers.first()->interval(), milliseconds);
        }
        QVERIFY(timers.first()->isActive() && !timers.first()->isSingleShot());
        QVERIFY(rig.probed.isEmpty());
        QVERIFY(QMetaObject::invokeMethod(timers.first(), "timeout"));
        QCOMPARE(rig.probed, QStringList{u"A"_s});
    }
};

QTEST_GUILESS_MAIN(StoreTest)
#include "tst_store.moc"
