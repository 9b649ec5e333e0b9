#include "Fixture.h"
#include "Merge.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

/// Servers from words as in the fixture: "Anh2" is server A, named n, on host h, probed at 2.
QList<Server> servers(const QString& words) {
    QList<Server> list;
    for (const QString& word : words.split(u' ', Qt::SkipEmptyParts)) {
        Server server;
        server.id = QUuid(word.at(0).unicode(), 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
        server.name = word.mid(1, 1);
        server.host = word.mid(2, 1);
        if (word.size() > 3)
            server.metrics.emplace().lastChecked = Instant{word.mid(3).toDouble()};
        list.append(server);
    }
    return list;
}

QString words(const QList<Server>& list) {
    QStringList words;
    for (const Server& server : list)
        words += QChar(server.id.data1) + server.name + server.host +
                 (server.metrics ? QString::number(server.metrics->lastChecked.secondsSinceReferenceDate) : QString());
    return words.join(u' ');
}

} // namespace

class MergeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    static void lists() {
        for (const QString& line : fixtureLines(u"merge.txt"_s).sliced(1)) {
            const QStringList row = line.section(u'#', 0, 0).split(u'|');
            const QList<Server> base = servers(row[0]);
            const QList<Server> theirs = servers(row[2]);
            const QString result = row[3].trimmed();
            QCOMPARE(words(merged(base, servers(row[1]), theirs)), result);
            QCOMPARE(words(merged(theirs, theirs, servers(result))), result); // the others follow
        }
    }

    static void settings() {
        const AppSettings base;
        AppSettings ours = base;
        ours.refreshIntervalSeconds = 60;
        ours.soundAlerts = false;
        AppSettings theirs = base;
        theirs.refreshIntervalSeconds = 90;
        theirs.pinnedMenuBarItems = {};
        AppSettings expected = ours;
        expected.pinnedMenuBarItems = {};
        QCOMPARE(merged(base, ours, theirs), expected);
        QCOMPARE(merged(base, base, theirs), theirs);
    }
};

QTEST_GUILESS_MAIN(MergeTest)
#include "tst_merge.moc"
