#include "StoreRig.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTest>

#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace tarnwick;

/// Saves a small and a large fleet in turns, forever. Writes to standard output after each large one.
static int saveForever(const QString& folder) {
    StoreRig rig;
    rig.folder = folder;
    rig.start();
    for (bool large = true;; large = !large) {
        rig.store->setServers(QList<Server>(large ? 300 : 1, StoreRig::server(QString(50, u'x'))));
        rig.store->save();
        rig.finishSaving();
        if (large)
            write(1, "s", 1);
    }
}

class CrashTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void filesAreWholeWheneverTheProgramIsKilled() {
        StoreRig rig;
        for (int round = 0; round < 25; ++round) {
            QProcess child;
            child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
            child.start(QCoreApplication::applicationFilePath(), {u"save"_s, rig.folder});
            QVERIFY(child.waitForReadyRead(20'000));
            QElapsedTimer time; // each round kills it a little later
            for (time.start(); time.nsecsElapsed() < 300'000LL * round;) {
            }
            child.kill();
            QVERIFY(child.waitForFinished(20'000));
            QCOMPARE(child.exitStatus(), QProcess::CrashExit);

            const qsizetype count = rig.storedFleet().size();
            QVERIFY2(count == 1 || count == 300, qPrintable(QString::number(count)));
            QVERIFY(std::holds_alternative<AppSettings>(decodeSettings(rig.read(u"settings.json"_s))));
            QVERIFY(rig.files().filter(u"unreadable"_s).isEmpty());
        }
    }
};

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    if (argc == 3 && QCoreApplication::arguments().at(1) == u"save")
        return saveForever(QCoreApplication::arguments().at(2));
    CrashTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_crash.moc"
