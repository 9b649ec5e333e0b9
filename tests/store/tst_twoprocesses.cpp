// Two processes on one data folder, which add, move and remove servers at random. With a number as its only argument it
// goes on for so many seconds in each way.

#include "SingleInstance.h"
#include "StoreRig.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QSocketNotifier>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <array>
#include <cstdio>

#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

qint64 milliseconds = 1'000;

void print(const QStringList& words) {
    std::puts(qPrintable(words.join(u' ')));
    std::fflush(stdout);
}

/// One of the two. It prints each name that it adds or removes, after a "+" or a "-"; then, for each line of input, its
/// list after an "=".
int edit(const QString& folder, const QString& lockFolder, const QString& prefix) {
    SingleInstance instance(lockFolder, false);
    StoreRig rig;
    rig.folder = folder;
    rig.role = instance.role();
    rig.start();
    QObject::connect(&instance, &SingleInstance::roleChanged, [&] { rig.store->setRole(instance.role()); });

    QRandomGenerator* const random = QRandomGenerator::global();
    QTimer edits;
    QObject::connect(&edits, &QTimer::timeout, [&, count = 0]() mutable {
        edits.setInterval(static_cast<int>(random->bounded(30)));
        if (instance.role() == Role::follower)
            return;
        const QList<Server>& servers = rig.store->servers();
        // Together they may have removed all.
        const Server any = servers.value(random->bounded(std::max<qsizetype>(1, servers.size())));
        const int kind = static_cast<int>(random->bounded(10));
        if (kind < 5) {
            rig.store->addServer(StoreRig::server(prefix + QString::number(++count)));
            print({u"+"_s, servers.last().name});
        } else if (kind < 9 && servers.size() > 1) {
            rig.store->removeServer(any.id);
            print({u"-"_s, any.name});
        } else {
            rig.store->moveServerUp(any.id);
        }
    });
    edits.start(0);

    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, [&] {
        std::array<char, 64> bytes{};
        if (::read(STDIN_FILENO, bytes.data(), bytes.size()) <= 0)
            return QCoreApplication::quit();
        edits.stop();
        rig.finishSaving();
        print(QStringList{u"="_s} + rig.names());
    });
    return QCoreApplication::exec();
}

struct Editor {
    QProcess process;
    QStringList added;
    QStringList removed;
    QStringList shown;

    void start(const QStringList& arguments) {
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(QCoreApplication::applicationFilePath(), QStringList{u"edit"_s} + arguments);
    }
    /// Whether it has shown its list, now that it no longer edits.
    bool shows() {
        shown.clear();
        process.write("?\n");
        while (shown.isEmpty() && (process.canReadLine() || process.waitForReadyRead(10'000)))
            read();
        return !shown.isEmpty();
    }
    void read() {
        while (process.canReadLine()) {
            const QStringList words = QString::fromUtf8(process.readLine()).simplified().split(u' ');
            (words.first() == u"+" ? added : words.first() == u"-" ? removed : shown) += words.mid(1);
        }
    }
    ~Editor() {
        process.closeWriteChannel();
        process.waitForFinished();
    }
};

} // namespace

class TwoProcessesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    static void endWithTheSameList_data() {
        QTest::addColumn<bool>("isFile");
        QTest::addColumn<bool>("isShared");
        QTest::newRow("one leads, the other takes over") << false << true;
        QTest::newRow("the pipe is a file") << true << true;
        QTest::newRow("two computers") << false << false;
    }
    static void endWithTheSameList() {
        QFETCH(const bool, isFile);
        QFETCH(const bool, isShared);
        StoreRig rig;
        rig.write(u"servers.json"_s, encodeServers(StoreRig::fleet(u"0")).value());
        if (isFile)
            rig.write(u"instance"_s, "");
        std::array<Editor, 2> editors;
        Editor& one = editors[0];
        Editor& other = editors[1];
        one.start({rig.folder, isShared ? rig.folder : rig.home.filePath(u"one"_s), u"a"_s});
        QVERIFY(one.process.waitForReadyRead());
        other.start({rig.folder, isShared ? rig.folder : rig.home.filePath(u"other"_s), u"b"_s});
        const auto leads = [&](Editor& editor) {
            editor.read();
            return !editor.added.isEmpty();
        };
        QTest::qWait(static_cast<int>(milliseconds));
        QVERIFY(leads(one));
        QCOMPARE(leads(other), isFile || !isShared);

        QStringList added{u"0"_s};
        QStringList removed;
        if (!leads(other)) { // the leader ends, and another follower comes
            QVERIFY(one.shows());
            added += std::exchange(one.added, {});
            removed += one.removed;
            one.removed.clear();
            one.process.closeWriteChannel();
            QVERIFY(one.process.waitForFinished());
            QTRY_VERIFY(leads(other));
            one.start({rig.folder, rig.folder, u"c"_s});
            QTest::qWait(static_cast<int>(milliseconds));
            QVERIFY(!leads(one));
        }

        QVERIFY(one.shows() && other.shows());
        for (Editor& editor : editors) {
            added += editor.added;
            removed += editor.removed;
        }
        for (const QString& name : std::as_const(removed))
            added.removeAll(name);
        added.sort();
        const auto isComplete = [&](Editor& editor) {
            if (!editor.shows())
                return false;
            QStringList sorted = editor.shown;
            sorted.sort();
            return sorted == added;
        };
        QTRY_VERIFY2(isComplete(one), qPrintable(one.shown.join(u' ') + u" instead of "_s + added.join(u' ')));
        QTRY_VERIFY2(isComplete(other), qPrintable(other.shown.join(u' ') + u" instead of "_s + added.join(u' ')));
        QTRY_COMPARE((one.shows(), one.shown), (other.shows(), other.shown));
        QStringList stored;
        for (const Server& server : rig.storedFleet())
            stored += server.name;
        QCOMPARE(stored, one.shown);
        QVERIFY(rig.files().filter(u"unreadable"_s).isEmpty());
        qInfo("%lld removed, %lld left", static_cast<long long>(removed.size()), static_cast<long long>(added.size()));
    }
};

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (argc == 5)
        return edit(arguments.at(2), arguments.at(3), arguments.at(4));
    TwoProcessesTest test;
    if (argc == 2 && arguments.at(1).toInt() > 0) {
        milliseconds = arguments.at(1).toInt() * 1'000LL;
        argc = 1;
    }
    return QTest::qExec(&test, argc, argv);
}

#include "tst_twoprocesses.moc"
