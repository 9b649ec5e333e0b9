// Two processes on one data folder, which add, move and remove servers at random. With a number as its only argument it
// goes on for so many seconds in each way.

#include "SingleInstance.h"
#include "StoreRig.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QSocketNotifier>
#include <QTest>
#include <QTextStream>
#include <QTimer>

#include <algorithm>
#include <memory>
#include <optional>

#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

int milliseconds = 1'000;
constexpr int patience = 30'000;

void print(const QStringList& words) {
    QTextStream(stdout) << words.join(u' ') << Qt::endl;
}

/// One of the two. It prints each name that it adds or removes, after a "+" or a "-"; once its input has ended, its
/// list after an "=", and again whenever that changes.
int edit(const QString& folder, const QString& lockFolder, const QString& prefix) {
    SingleInstance instance(lockFolder, false);
    StoreRig rig;
    rig.folder = folder;
    rig.role = instance.role();
    rig.start();
    ServerStore& store = *rig.store;
    QObject::connect(&instance, &SingleInstance::roleChanged, [&] { store.setRole(instance.role()); });

    QRandomGenerator* const random = QRandomGenerator::global();
    QTimer edits;
    QObject::connect(&edits, &QTimer::timeout, [&, count = 0]() mutable {
        edits.setInterval(static_cast<int>(random->bounded(30)));
        if (instance.role() == Role::follower)
            return;
        const QList<Server>& servers = store.servers();
        // Together they may have removed all.
        const Server any = servers.value(random->bounded(std::max<qsizetype>(1, servers.size())));
        const int kind = static_cast<int>(random->bounded(10));
        if (kind < 5) {
            store.addServer(StoreRig::server(prefix + QString::number(++count)));
            print({u"+"_s, servers.last().name});
        } else if (kind < 9 && servers.size() > 1) {
            store.removeServer(any.id);
            print({u"-"_s, any.name});
        } else {
            store.moveServerUp(any.id);
        }
    });
    edits.start(0);

    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, [&] {
        input.setEnabled(false);
        edits.stop();
        rig.finishSaving();
        const auto show = [&rig] {
            print(QStringList{u"="_s} + rig.names());
        };
        QObject::connect(&store, &ServerStore::serversChanged, show);
        show();
    });
    return QCoreApplication::exec();
}

/// Every name that was ever added, and whether nobody has removed it.
using Names = QMap<QString, bool>;

struct Editor {
    QProcess process;
    bool hasEdited = false;
    std::optional<QStringList> list; ///< once it has been stopped; together they may have removed all

    Editor(const QStringList& arguments, Names& isLeft) {
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(QCoreApplication::applicationFilePath(), arguments);
        QObject::connect(&process, &QProcess::readyRead, &process, [this, &isLeft] {
            while (process.canReadLine()) {
                const QStringList words = QString::fromUtf8(process.readLine()).simplified().split(u' ');
                if (words.first() == u"=")
                    list = words.mid(1);
                else
                    isLeft.insert(words.last(), words.first() == u"+" && isLeft.value(words.last(), true));
                hasEdited = hasEdited || words.first() != u"=";
            }
        });
    }
    ~Editor() { end(); }
    void stop() {
        process.closeWriteChannel();
        QTRY_VERIFY_WITH_TIMEOUT(list, patience);
    }
    void end() {
        process.kill();
        process.waitForFinished();
    }
};

QStringList sorted(QStringList list) {
    list.sort();
    return list;
}

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
        Names isLeft{{u"0"_s, true}};
        const auto start = [&](const QString& name) {
            const QStringList arguments{rig.folder, isShared ? rig.folder : rig.home.filePath(name), name};
            return std::make_unique<Editor>(arguments, isLeft);
        };
        auto one = start(u"a"_s);
        QTRY_VERIFY_WITH_TIMEOUT(one->hasEdited, patience);
        const auto other = start(u"b"_s);
        QTest::qWait(milliseconds);
        if (isShared && !isFile) { // the leader ends, and another follower comes
            QVERIFY(!other->hasEdited);
            one->stop();
            one->end();
            QTRY_VERIFY_WITH_TIMEOUT(other->hasEdited, patience);
            one = start(u"c"_s);
            QTest::qWait(milliseconds);
            QVERIFY(!one->hasEdited);
        }
        QTRY_VERIFY_WITH_TIMEOUT(other->hasEdited, patience);
        one->stop();
        other->stop();
        QTRY_COMPARE_WITH_TIMEOUT(sorted(*one->list), isLeft.keys(true), patience);
        QTRY_COMPARE_WITH_TIMEOUT(sorted(*other->list), isLeft.keys(true), patience);
        QTRY_COMPARE_WITH_TIMEOUT(*one->list, *other->list, patience);
        QCOMPARE(StoreRig::namesOf(rig.storedFleet()), *one->list);
        QVERIFY(rig.files().filter(u"unreadable"_s).isEmpty());
        qInfo() << isLeft.keys(false).size() << "removed," << one->list->size() << "left";
    }
};

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (argc == 4)
        return edit(arguments.at(1), arguments.at(2), arguments.at(3));
    TwoProcessesTest test;
    if (const int seconds = arguments.value(1).toInt(); seconds > 0)
        milliseconds = 1'000 * seconds;
    return QTest::qExec(&test, milliseconds > 1'000 ? 1 : argc, argv);
}

#include "tst_twoprocesses.moc"
