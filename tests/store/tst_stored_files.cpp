#include "StoreRig.h"

#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {
QList<Server> fleetIn(const QByteArray& json) {
    const auto decoded = decodeServers(json);
    const auto* servers = std::get_if<QList<Server>>(&decoded);
    return servers ? *servers : QList<Server>();
}
} // namespace

class StoredFilesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void firstLaunchSeedsAndSaves() {
        StoreRig rig;
        rig.sshHosts = {{u"web"_s, u"10.0.0.1"_s, u"admin"_s, 2222, u"/k"_s}, {u"db"_s, u"db"_s, u"root"_s, 22, {}}};
        rig.start();
        QCOMPARE(rig.files(), (QStringList{u"servers.json"_s, u"settings.json"_s}));
        QCOMPARE(QFile::permissions(rig.folder) & 0x77, QFile::Permissions()); // nothing for group and others
        for (const QString& file : rig.files())
            QCOMPARE(QFile::permissions(rig.path(file)) & 0x177, QFile::Permissions());

        QCOMPARE(fleetIn(rig.read(u"servers.json"_s)), rig.store->servers());
        QCOMPARE(rig.names(), (QStringList{u"Local Machine"_s, u"web"_s, u"db"_s}));
        const Server local = rig.store->servers().at(0);
        QVERIFY(local.isLocal && local.isEnabled && local.dockerEnabled && !local.metrics);
        QCOMPARE(local.host + u'/' + local.user, u"localhost/root"_s);
        const Server web = rig.store->servers().at(1);
        QVERIFY(!web.isLocal && web.isEnabled && web.dockerEnabled);
        QCOMPARE(web.user + u'@' + web.host, u"admin@10.0.0.1"_s);
        QCOMPARE(web.port, 2222);
        QCOMPARE(web.customSshKeyPath, u"/k"_s);
        QVERIFY(web.id != local.id && web.id != rig.store->servers().at(2).id);
    }

    void storedStateComesBack() {
        StoreRig rig;
        rig.computerName = u"desk"_s;
        rig.start();
        QCOMPARE(rig.names(), QStringList{u"desk"_s});
        rig.store->editSettings([](AppSettings& settings) { settings.refreshIntervalSeconds = 77; });
        const QList<Server> servers = rig.store->servers();
        rig.store.reset();
        rig.start();
        QCOMPARE(rig.store->servers(), servers);
        QCOMPARE(rig.store->settings().refreshIntervalSeconds, 77);
    }

    void storedEmptyFleetIsSeededAgain() {
        StoreRig rig;
        rig.write(u"servers.json"_s, "[]");
        rig.start();
        QCOMPARE(rig.names(), QStringList{u"Local Machine"_s});
        QCOMPARE(rig.files().size(), 2); // an empty list is no damage: nothing to keep
    }

    void damagedFilesAreMovedAside_data() {
        QTest::addColumn<QByteArray>("servers");
        QTest::addColumn<QByteArray>("settings");
        const auto row = [](const char* name, const QByteArray& servers, const QByteArray& settings) {
            QTest::newRow(name) << servers << settings;
        };
        row("both damaged", "[{\"id\":", "{");
        row("an entry lacks a key", "[{\"name\":\"web\"}]", "{\"soundAlerts\":1}");
        row("of another type", "{}", "[]");
        row("both empty", "", "");
        row("not text", "\xff\xfe\x00\x00"_ba, QByteArray(4096, '\0'));
    }
    void damagedFilesAreMovedAside() {
        QFETCH(QByteArray, servers);
        QFETCH(QByteArray, settings);
        StoreRig rig;
        rig.write(u"servers.json"_s, servers);
        rig.write(u"settings.json"_s, settings);
        const QString suffix = u".json.unreadable-20010101T001640Z"_s; // 1,000 s after 2001 began
        rig.write(u"servers"_s + suffix, "taken");
        rig.write(u"servers"_s + suffix + u"-2"_s, "taken too");
        rig.start();
        QCOMPARE(rig.names(), QStringList{u"Local Machine"_s});
        QCOMPARE(rig.store->settings().alertDiskThresholdPercent, 90.0);
        QCOMPARE(rig.read(u"servers"_s + suffix), "taken"_ba);
        QCOMPARE(rig.read(u"servers"_s + suffix + u"-2"_s), "taken too"_ba);
        QVERIFY(rig.files().contains(u"servers"_s + suffix + u"-3"_s));
        QCOMPARE(rig.read(u"servers"_s + suffix + u"-3"_s), servers);
        QCOMPARE(rig.read(u"settings"_s + suffix), settings);

        rig.now = Instant{5000};
        rig.store->save(); // moves nothing a second time
        QCOMPARE(rig.files().size(), 6);
        QCOMPARE(fleetIn(rig.read(u"servers.json"_s)), rig.store->servers());
    }

    void whatCannotBeReadIsMovedAside() {
        StoreRig rig;
        QDir().mkpath(rig.path(u"servers.json/inside"_s));
        rig.start();
        QCOMPARE(fleetIn(rig.read(u"servers.json"_s)), rig.store->servers());
        QVERIFY(QFileInfo(rig.path(u"servers.json.unreadable-20010101T001640Z/inside"_s)).isDir());
    }

    void damagedSettingsStayUntilTheNextSave() {
        StoreRig rig;
        rig.write(u"servers.json"_s, encodeServers({StoreRig::server(u"a"_s)}).value());
        rig.write(u"settings.json"_s, "?");
        rig.start();
        QCOMPARE(rig.read(u"settings.json"_s), "?"_ba);
        rig.store->save();
        QCOMPARE(std::get<AppSettings>(decodeSettings(rig.read(u"settings.json"_s))), rig.store->settings());
    }

    void linkedFileStaysALink() {
        StoreRig rig;
        rig.write(u"elsewhere.json"_s, encodeServers({StoreRig::server(u"a"_s)}).value());
        QVERIFY(QFile::link(rig.path(u"elsewhere.json"_s), rig.path(u"servers.json"_s)));
        rig.start();
        rig.store->addServer(StoreRig::server(u"b"_s));
        QVERIFY(QFileInfo(rig.path(u"servers.json"_s)).isSymLink());
        QCOMPARE(fleetIn(rig.read(u"elsewhere.json"_s)).size(), 2);
    }

    void failedSaveWritesNothingMore() {
        StoreRig rig;
        rig.startWith({StoreRig::server(u"a"_s)});
        Server broken = rig.store->servers().at(0);
        broken.metrics = ServerMetrics();
        broken.metrics->cpuPercent = std::numeric_limits<double>::quiet_NaN();
        QVERIFY(!rig.saves([&] { rig.store->updateServer(broken); }));
        QVERIFY(rig.store->servers().at(0).metrics.has_value()); // the list keeps it

        broken.metrics.reset();
        rig.store->updateServer(broken);
        QFile::remove(rig.path(u"servers.json"_s));
        QFile::remove(rig.path(u"settings.json"_s));
        QVERIFY(QDir().mkpath(rig.path(u"servers.json"_s)));
        rig.store->save();
        QCOMPARE(rig.files(), QStringList{u"servers.json"_s}); // no settings without the fleet
        QVERIFY(QDir().rmdir(rig.path(u"servers.json"_s)));
        QVERIFY(rig.saves([&] { rig.store->save(); }));
    }

    void noFolderAtAll() {
        StoreRig rig;
        rig.folder = rig.home.filePath(u"file/Tarnwick"_s);
        QFile inTheWay(rig.home.filePath(u"file"_s));
        QVERIFY(inTheWay.open(QIODevice::WriteOnly));
        rig.start();
        QCOMPARE(rig.names(), QStringList{u"Local Machine"_s});
    }
};

QTEST_GUILESS_MAIN(StoredFilesTest)
#include "tst_stored_files.moc"
