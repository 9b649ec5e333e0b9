#include "Files.h"
#include "ProcessRunner.h"
#include "SingleInstance.h"

#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <cstdio>
#include <memory>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

/// As the program without a display does: it prints its role and stays.
int own(const QString& folder) {
    const SingleInstance instance(folder, false);
    if (!ProcessRunner::startDetached(u"/bin/sleep"_s, {u"3"_s}))
        return 1;
    std::puts(instance.role() == Role::leader ? "leader" : "follower");
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
        SingleInstance first(folder, true);
        QVERIFY(first.role() == Role::leader && !first.isSurplus() && !first.requestActivation());
        QCOMPARE(QFile::permissions(folder).toInt() & 0x77, 0);
        QCOMPARE(QFile::permissions(folder + u"/instance"_s).toInt() & 0x77, 0);

        QSignalSpy spy(&first, &SingleInstance::activationRequested);
        for (int i = 0; i < 2; ++i) {
            SingleInstance second(folder, true);
            QVERIFY(second.isSurplus() && second.requestActivation());
        }
        QVERIFY(spy.wait());
        QCOMPARE(spy.size(), 1);
        QVERIFY(SingleInstance(folder, true).requestActivation());
        QVERIFY(spy.wait());
        QCOMPARE(first.role(), Role::leader);
        QVERIFY(!SingleInstance(home.filePath(u"c"_s), true).isSurplus());
    }

    static void leadingAndFollowing() {
        const QTemporaryDir home;
        SingleInstance text(home.path(), false);
        SingleInstance otherText(home.path(), false);
        QVERIFY(text.role() == Role::leader && otherText.role() == Role::follower && !otherText.isSurplus());

        auto desktop = std::make_unique<SingleInstance>(home.path(), true);
        QVERIFY(!desktop->isSurplus());
        const QSignalSpy activated(desktop.get(), &SingleInstance::activationRequested);
        connect(&text, &SingleInstance::roleChanged, &text, [&] {
            for (const QDeadlineTimer saving(200); !saving.hasExpired();)
                QCoreApplication::processEvents();
            QVERIFY(!desktop || desktop->role() == Role::follower); // this one is still saving
        });
        QTRY_COMPARE(desktop->role(), Role::leader);
        QCOMPARE(text.role(), Role::follower);
        QVERIFY(SingleInstance(home.path(), false).role() == Role::follower && activated.isEmpty());
        SingleInstance surplus(home.path(), true);
        QVERIFY(surplus.isSurplus() && surplus.requestActivation());
        QTRY_COMPARE(activated.size(), 1);

        desktop.reset();
        QTRY_COMPARE((text.role() == Role::leader) + (otherText.role() == Role::leader), 1);
    }

    static void freedByItsEnd() {
        const QTemporaryDir home;
        const auto isFree = [&home] {
            return SingleInstance(home.path(), false).role() == Role::leader;
        };
        QVERIFY(isFree() && isFree());
        QProcess owner;
        owner.start(QCoreApplication::applicationFilePath(), {u"--own"_s, home.path()});
        QVERIFY(owner.waitForReadyRead());
        QCOMPARE(owner.readAll(), "leader\n");
        QVERIFY(!isFree());
        QCOMPARE(::kill(static_cast<pid_t>(owner.processId()), SIGSTOP), 0);
        const SingleInstance desktop(home.path(), true);
        QCOMPARE(desktop.role(), Role::follower);
        QTRY_COMPARE(desktop.role(), Role::leader); // nobody answers
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
        QVERIFY(QDir().mkpath(at(u"folder/instance"_s)) && QDir().mkpath(at(u"link"_s)) &&
                QDir().mkpath(at(u"own"_s)) && QDir().mkpath(at(u"foreign"_s)));
        for (const auto& name : {u"pipe"_s, u"own/instance"_s, u"foreign/instance"_s})
            QCOMPARE(::mkfifo(QFile::encodeName(at(name)).constData(), 0666), 0);
        QVERIFY(QFile::link(at(u"pipe"_s), at(u"link/instance"_s)));
        QStringList unusable{u"regular"_s, u"link"_s, u"folder"_s, u"regular/instance/below"_s};
        if (::chown(QFile::encodeName(at(u"foreign/instance"_s)).constData(), 1, 1) == 0) // as root
            unusable += u"foreign"_s;
        for (const QString& name : std::as_const(unusable)) {
            const SingleInstance one(at(name), true);
            SingleInstance another(at(name), true);
            QVERIFY2(one.role() == Role::leader && another.role() == Role::leader && !another.isSurplus() &&
                         !another.requestActivation(),
                     qPrintable(name));
        }
        QCOMPARE(readFile(at(u"regular/instance"_s)), "kept");
        QVERIFY(QFileInfo(at(u"link/instance"_s)).isSymLink() && QFileInfo(at(u"folder/instance"_s)).isDir());

        const SingleInstance one(at(u"own"_s), false);
        QVERIFY(SingleInstance(at(u"own"_s), false).role() == Role::follower);
        QCOMPARE(QFile::permissions(at(u"own/instance"_s)).toInt() & 0x77, 0);
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
