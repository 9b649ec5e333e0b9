#include "Files.h"
#include "ProcessRunner.h"
#include "SingleInstance.h"

#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

/// As the program does: when it is the first, it prints so and stays.
int own(const QString& folder) {
    const SingleInstance instance(folder);
    if (!instance.isFirst() || !ProcessRunner::startDetached(u"/bin/sleep"_s, {u"3"_s}))
        return 1;
    std::puts("first");
    std::fflush(stdout);
    return QCoreApplication::exec();
}

} // namespace

class SingleInstanceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    static void activation() {
        const QTemporaryDir home;
        const QString folder = home.filePath(u"a/b"_s);
        SingleInstance first(folder);
        QVERIFY(first.isFirst());
        QVERIFY(!first.requestActivation());
        QCOMPARE(QFileInfo(folder).permissions() &
                     (QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther),
                 QFile::Permissions{});

        QSignalSpy spy(&first, &SingleInstance::activationRequested);
        for (int i = 0; i < 2; ++i) {
            SingleInstance second(folder);
            QVERIFY(!second.isFirst());
            QVERIFY(second.requestActivation());
        }
        QVERIFY(spy.wait());
        QCOMPARE(spy.size(), 1);
        QVERIFY(SingleInstance(folder).requestActivation());
        QVERIFY(spy.wait());
        QVERIFY(SingleInstance(home.filePath(u"c"_s)).isFirst());
    }

    static void freedByItsEnd() {
        const QTemporaryDir home;
        const auto isFree = [&home] {
            return SingleInstance(home.path()).isFirst();
        };
        QVERIFY(isFree());
        QVERIFY(isFree());
        QProcess owner;
        owner.start(QCoreApplication::applicationFilePath(), {u"--own"_s, home.path()});
        QVERIFY(owner.waitForReadyRead());
        QCOMPARE(owner.readAll(), "first\n");
        QVERIFY(!isFree());
        owner.kill(); // its child lives on without the lock
        QVERIFY(owner.waitForFinished());
        QVERIFY(isFree());
    }

    /// Something else at the path is left alone, and the program runs.
    static void nothingToLock() {
        const QTemporaryDir home;
        const auto at = [&home](const QString& name) {
            return home.filePath(name);
        };
        QVERIFY(writeFile(at(u"regular/instance"_s), "kept"));
        QCOMPARE(::mkfifo(QFile::encodeName(at(u"pipe"_s)).constData(), 0600), 0);
        QVERIFY(QDir().mkpath(at(u"folder/instance"_s)) && QDir().mkpath(at(u"link"_s)));
        QVERIFY(QFile::link(at(u"pipe"_s), at(u"link/instance"_s)));
        for (const auto& name : {u"regular"_s, u"link"_s, u"folder"_s, u"regular/instance/below"_s}) {
            const SingleInstance one(at(name));
            SingleInstance another(at(name));
            QVERIFY2(one.isFirst() && another.isFirst() && !another.requestActivation(), qPrintable(name));
        }
        QCOMPARE(readFile(at(u"regular/instance"_s)), "kept");
        QVERIFY(QFileInfo(at(u"link/instance"_s)).isSymLink() && QFileInfo(at(u"folder/instance"_s)).isDir());
    }
};

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    if (argc == 3 && qstrcmp(argv[1], "--own") == 0)
        return own(QFile::decodeName(argv[2]));
    SingleInstanceTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_singleinstance.moc"
