#include "StoreRig.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QLockFile>
#include <QSignalSpy>
#include <QTest>

#include <csignal>
#include <limits>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace tarnwick;

class StoredFilesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void firstLaunchSeedsAndSaves() {
        StoreRig rig;
        const mode_t usual = ::umask(0777);
        rig.sshHosts = {{u"web"_s, u"10.0.0.1"_s, u"admin"_s, 2222, u"/k"_s}, {u"db"_s, u"db"_s, u"root"_s, 22, {}}};
        rig.start();
        QCOMPARE(rig.files(), (QStringList{u"servers.json"_s, u"settings.json"_s}));
        ::umask(usual);
        QVERIFY(rig.probed.isEmpty()); // the first refresh waits for the event loop
        const auto isPrivate = [&rig](const QString& path) {
            const auto access = QFile::permissions(rig.path(path)).toInt() & 0x7077; // the owner's and others'
            return access == (path.endsWith(u"json") ? 0x6000U : 0x7000U);
        };
        for (const QString& path : {u".."_s, u"."_s, u"servers.json"_s, u"settings.json"_s})
            QVERIFY(isPrivate(path));

        QCOMPARE(rig.storedFleet(), rig.store->servers());
        QCOMPARE(rig.names(), (QStringList{u"Local Machine"_s, u"web"_s, u"db"_s}));
        const Server local = rig.store->servers().at(0);
        const Server web = rig.store->servers().at(1);
        QVERIFY(local.isLocal && local.isEnabled && local.dockerEnabled && !local.metrics);
        QVERIFY(!web.isLocal && web.isEnabled && web.dockerEnabled);
        QCOMPARE(u"%1@%2:%3"_s.arg(local.user, local.host).arg(local.port), u"root@localhost:22"_s);
        QCOMPARE(u"%1@%2:%3 %4"_s.arg(web.user, web.host).arg(web.port).arg(web.customSshKeyPath.value_or(QString())),
                 u"admin@10.0.0.1:2222 /k"_s);
        QVERIFY(web.id != local.id && web.id != rig.store->servers().at(2).id);

        rig.store->editSettings([](AppSettings& settings) { settings.refreshIntervalSeconds = 77; });
        const QList<Server> servers = rig.store->servers();
        rig.store.reset();
        for (const QString& path : {u"."_s, u"servers.json"_s})
            QVERIFY(QFile::setPermissions(rig.path(path), QFile::permissions(rig.path(path)) | QFile::ReadOther));
        rig.start();
        QVERIFY(isPrivate(u"."_s) && isPrivate(u"servers.json"_s));
        QCOMPARE(rig.store->servers(), servers);
        QCOMPARE(rig.store->settings().refreshIntervalSeconds, 77);
        rig.store.reset();
        rig.write(u"servers.json"_s, "[]");
        rig.sshHosts.clear();
        rig.computerName = u"desk"_s;
        rig.start();
        QCOMPARE(rig.names(), QStringList{u"desk"_s});
        QCOMPARE(rig.files().size(), 2); // an empty list is no damage: nothing to keep
    }

    void damagedFilesAreMovedAside() {
        for (const auto& [servers, settings] : {std::pair("[{\"id\":"_ba, "{"_ba), // cut off
                                                {"[{\"name\":\"web\"}]"_ba, "{\"soundAlerts\":1}"_ba},
                                                {"{}"_ba, "[]"_ba},
                                                {""_ba, ""_ba},
                                                {"\xff\xfe\x00\x00"_ba, QByteArray(4096, '\0')}}) {
            StoreRig rig;
            rig.write(u"servers.json"_s, servers);
            rig.write(u"settings.json"_s, settings);
            const QString aside = u"servers.json.unreadable-20010101T001640Z"_s; // 1,000 s after 2001 began
            rig.write(aside, "taken");
            rig.write(aside + u"-2"_s, "taken too");
            rig.start();
            QCOMPARE(rig.names(), QStringList{u"Local Machine"_s});
            QCOMPARE(rig.store->settings().alertDiskThresholdPercent, 90.0);
            QCOMPARE(rig.read(aside) + rig.read(aside + u"-2"_s), "takentaken too"_ba);
            QCOMPARE(rig.read(aside + u"-3"_s), servers);
            QCOMPARE(rig.read(QString(aside).replace(u"servers"_s, u"settings"_s)), settings);

            rig.now = Instant{5000};
            rig.store->save(); // moves nothing a second time
            QCOMPARE(rig.files().size(), 6);
            QCOMPARE(rig.storedFleet(), rig.store->servers());
        }
    }

    void whatCannotBeReadIsMovedAside() {
        const auto make = [](const QString& kind, const QString& path) {
            const QByteArray name = QFile::encodeName(path);
            return kind == u"folder"   ? QDir().mkpath(path)
                   : kind == u"pipe"   ? ::mkfifo(name.constData(), 0600) == 0
                   : kind == u"nobody" ? QFile::link(u"elsewhere.json"_s, path) && ::lchown(name.constData(), 1, 1) == 0
                                       : QFile::link(kind, path);
        };
        QStringList kinds{u"folder"_s, u"pipe"_s, u"nothing.json"_s, u"."_s};
        if (::geteuid() == 0) // only root can give a link away
            kinds += u"nobody"_s;
        for (const QString& kind : kinds) {
            StoreRig rig;
            rig.write(u"elsewhere.json"_s, "[]");
            QVERIFY(make(kind, rig.path(u"servers.json"_s)));
            rig.start();
            QCOMPARE(rig.storedFleet(), rig.store->servers());
            QCOMPARE(rig.files(), (QStringList{u"elsewhere.json"_s, u"servers.json"_s,
                                               u"servers.json.unreadable-20010101T001640Z"_s, u"settings.json"_s}));
            QCOMPARE(rig.read(u"elsewhere.json"_s), "[]"_ba);
        }
    }

    void leftoversOfKilledSavesAreRemoved() {
        StoreRig rig;
        QStringList kept;
        for (const auto& [name, minutes, isKept] : {std::tuple(u"servers.json.vLCseP"_s, 11, false),
                                                    {u"settings.json.aaaaaB"_s, 11, false},
                                                    {u"servers.json.vLCseQ"_s, 9, true}, // somebody may be writing it
                                                    {u"servers.json.backup"_s, 11, true},
                                                    {u"servers.json.Backup"_s, 11, true},
                                                    {u"servers.json.BACKUP"_s, 11, true},
                                                    {u"servers.json.a1B2c3"_s, 11, true},
                                                    {u"servers.json.vLCsePx"_s, 11, true},
                                                    {u"servers_json.vLCseP"_s, 11, true}}) {
            rig.write(name, "[]");
            QFile file(rig.path(name));
            QVERIFY(file.open(QIODevice::ReadWrite));
            QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(-60LL * minutes),
                                     QFileDevice::FileModificationTime));
            if (isKept)
                kept += name;
        }
        rig.start();
        kept += {u"servers.json"_s, u"settings.json"_s};
        kept.sort();
        QCOMPARE(rig.files(), kept);
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
        QCOMPARE(rig.storedFleet(u"elsewhere.json"_s).size(), 2);
    }

    void failedSaveWritesNothingMore() {
        StoreRig rig(u"a");
        Server broken = rig.store->servers().at(0);
        broken.metrics = ServerMetrics();
        broken.metrics->cpuPercent = std::numeric_limits<double>::quiet_NaN();
        QVERIFY(!rig.saves([&] { rig.store->updateServer(broken); }));
        QVERIFY(rig.store->servers().at(0).metrics.has_value()); // the list keeps it

        broken.metrics.reset();
        rig.store->updateServer(broken);
        const QByteArray stored = rig.read(u"servers.json"_s);
        QVERIFY(QFile::remove(rig.path(u"settings.json"_s)));
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit usual{};
        QCOMPARE(::getrlimit(RLIMIT_FSIZE, &usual), 0);
        const rlimit fullDisk{4096, usual.rlim_max};
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &fullDisk), 0);
        rig.store->setServers(StoreRig::numbered(100));
        rig.store->save();
        QCOMPARE(rig.files(), QStringList{u"servers.json"_s}); // no settings without the fleet
        QCOMPARE(rig.read(u"servers.json"_s), stored);
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &usual), 0);
        QVERIFY(rig.saves([&] { rig.store->save(); }));
    }

    void whatOthersWriteIsMergedIn() {
        StoreRig rig(u"ABC");
        QSignalSpy changed(rig.store.get(), &ServerStore::serversChanged);
        QList<Server> theirs = rig.storedFleet();
        theirs.append(StoreRig::server(u"D"_s));
        theirs[0].name = u"a"_s;
        rig.write(u"servers.json"_s, encodeServers(theirs).value());
        QTRY_COMPARE(rig.names().join(QString()), u"aBCD"_s); // while nothing is saved here
        QCOMPARE(changed.size(), 1);

        // The store saves before it hears of these.
        theirs.removeAt(1);
        AppSettings settings = rig.store->settings();
        settings.alertRamThresholdPercent = 1;
        rig.write(u"servers.json"_s, encodeServers(theirs).value());
        rig.write(u"settings.json"_s, encodeSettings(settings).value());
        rig.store->addServer(StoreRig::server(u"E"_s));
        rig.store->editSettings([](AppSettings& edited) { edited.alertDiskThresholdPercent = 2; });
        rig.finishSaving();
        QCOMPARE(rig.names().join(QString()), u"aCDE"_s);
        QCOMPARE(rig.storedFleet(), rig.store->servers());
        settings.alertDiskThresholdPercent = 2;
        QCOMPARE(rig.store->settings(), settings);
        QCOMPARE(std::get<AppSettings>(decodeSettings(rig.read(u"settings.json"_s))), settings);

        rig.write(u"servers.json"_s, "[");
        rig.store->removeServer(theirs.at(0).id);
        QCOMPARE(rig.read(u"servers.json.unreadable-20010101T001640Z"_s), "["_ba);
        QCOMPARE(rig.storedFleet(), rig.store->servers());
        QCOMPARE(rig.names().join(QString()), u"CDE"_s);
    }

    void savesWaitForOthersAndTheLastStateWins() {
        StoreRig rig(u"A");
        rig.finishSaving();
        const QByteArray before = readFile(rig.path(u"servers.json"_s));
        QLockFile others(rig.path(u"lock"_s));
        QVERIFY(others.tryLock());
        for (const QChar name : u"BCDE"_s)
            rig.store->addServer(StoreRig::server(name));
        QVERIFY(!rig.store->finishSaving()); // it must be possible to end
        rig.store->removeServer(rig.store->servers().at(2).id);
        QCOMPARE(readFile(rig.path(u"servers.json"_s)), before);
        others.unlock();
        QCOMPARE(rig.storedFleet(), rig.store->servers());
        QCOMPARE(rig.names().join(QString()), u"ABDE"_s);

        QVERIFY(others.tryLock());
        rig.store->removeServer(rig.store->servers().at(2).id);
        QVERIFY(!rig.store->finishSaving());
        QElapsedTimer time;
        time.start();
        rig.store.reset(); // does not wait a second time
        QVERIFY(time.elapsed() < StateSaver::patience.count());
        others.unlock();
        QTRY_COMPARE(rig.storedFleet().size(), 3);
    }

    void aLockThatNamesNobodyIsBroken() {
        StoreRig rig(u"A");
        rig.finishSaving();
        rig.write(u"lock"_s, "");
        const QDeadlineTimer unbroken(20s); // it would hold for 30 s
        rig.store->addServer(StoreRig::server(u"B"_s));
        QCOMPARE(rig.storedFleet(), rig.store->servers());
        QVERIFY(!unbroken.hasExpired());
    }

    void standardFolder() {
        const QByteArray before = qgetenv("XDG_DATA_HOME");
        const QString usual = QDir::homePath() + u"/.local/share/Tarnwick"_s;
        for (const auto& [variable, folder] :
             {std::pair("/srv/data", u"/srv/data/Tarnwick"_s), {"", usual}, {"data", usual}, {"./data", usual}}) {
            qputenv("XDG_DATA_HOME", variable);
            QCOMPARE(ServerStore::standardFolder(), folder);
        }
        qputenv("XDG_DATA_HOME", before);
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
