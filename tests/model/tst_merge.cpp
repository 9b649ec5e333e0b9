#include "Merge.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

/// Servers from words: the first letter is the id, the second the name, the third the host; a digit is when the metrics
/// were taken. "Anh2" is server A, named n, on host h.
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
        struct Row {
            QString base, ours, theirs, result;
        };
        for (const auto& [base, ours, theirs, result] : {
                 Row{u"Ann Bnn"_s, u"Ann Bnn"_s, u"Ann Bnn"_s, u"Ann Bnn"_s},
                 {u""_s, u"Ann"_s, u"Bnn"_s, u"Bnn Ann"_s}, // nothing was known of either
                 {u""_s, u"Ann"_s, u"Axn"_s, u"Ann"_s},
                 {u"Ann"_s, u"Ann Xnn"_s, u"Ann Ynn"_s, u"Ann Ynn Xnn"_s}, // both added
                 {u"Ann Bnn"_s, u"Ann Bnn Xnn"_s, u"Bnn"_s, u"Bnn Xnn"_s}, // added here, removed there
                 {u"Ann Bnn Cnn"_s, u"Ann Bnn"_s, u"Bnn Cnn"_s, u"Bnn"_s}, // both removed
                 {u"Ann1 Bnn1"_s, u"Ann2 Bnn2"_s, u"Bnn1"_s, u"Bnn2"_s},   // a result is no change
                 {u"Ann1 Bnn1"_s, u"Bnn1"_s, u"Ann2 Bnn2"_s, u"Bnn2"_s},   //
                 {u"Ann Bnn"_s, u"Axn Bnn"_s, u"Bnn"_s, u"Bnn Axn"_s},     // changed here, removed there
                 {u"Ann Bnn"_s, u"Bnn"_s, u"Axn Bnn"_s, u"Axn Bnn"_s},     //
                 {u"Ann"_s, u"Axn"_s, u"Any"_s, u"Axy"_s},                 // each its own field
                 {u"Ann"_s, u"Axn"_s, u"Ayn"_s, u"Axn"_s},                 // the same field: ours
                 {u"Ann1"_s, u"Ann2"_s, u"Ann3"_s, u"Ann3"_s},             // the later result
                 {u"Ann1"_s, u"Ann4"_s, u"Ann3"_s, u"Ann4"_s},             //
                 {u"Ann5"_s, u"Ann5"_s, u"Ann3"_s, u"Ann3"_s},             // the clock was set back
                 {u"Ann5"_s, u"Ann3"_s, u"Ann5"_s, u"Ann3"_s},             //
                 {u"Ann Bnn Cnn"_s, u"Cnn Ann Bnn Xnn"_s, u"Ann Bnn"_s, u"Ann Bnn Xnn"_s},
                 {u"Ann Bnn Cnn"_s, u"Cnn Ann Bnn"_s, u"Ann Bnn Cnn Ynn"_s, u"Cnn Ann Bnn Ynn"_s}, // moved here
                 {u"Ann Bnn Cnn"_s, u"Ann Cnn Xnn"_s, u"Cnn Bnn Ann"_s, u"Cnn Ann Xnn"_s},         // moved there
                 {u"Ann Bnn Cnn"_s, u"Cnn Ann Bnn"_s, u"Bnn Ann Cnn"_s, u"Cnn Ann Bnn"_s},         // moved by both
                 {u"Ann Aab"_s, u"Ann Aab Acc"_s, u"Ann Axb"_s, u"Ann Axb Acc"_s}, // rows that share an id
                 {u"Ann Ann"_s, u""_s, u"Ann Ann"_s, u""_s},
             }) {
            QCOMPARE(words(merged(servers(base), servers(ours), servers(theirs))), result);
            QCOMPARE(words(merged(servers(theirs), servers(theirs), servers(result))), result); // the others follow
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
