#include "Files.h"
#include "LoginItem.h"
#include "linux/LinuxLoginItem.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <utility>

using namespace tarnwick;
using namespace Qt::StringLiterals;

class LoginItemTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    static void quotesThePath() {
        for (const auto& [path, value] : {
                 std::pair(u"/usr/bin/tarnwick"_s, R"("/usr/bin/tarnwick")"),
                 {u"/home/a b/50%/$HOME`id`"_s, R"(env "/home/a b/50%%/\\$HOME\\`id\\`")"},
                 {u"/tmp/\"quoted\"\\\nHidden=true"_s, R"("/tmp/\\"quoted\\"\\\\\nHidden=true")"},
             }) {
            const QByteArray entry = autostartEntry(path);
            QVERIFY2(entry.contains(QByteArray("\nExec=") + value + '\n'), entry.constData());
            QVERIFY(isAutostarted(entry));
        }
    }

    static void readsAnEntry() {
        for (const auto& [entry, starts] : {
                 std::pair("[Desktop Entry]\nExec=tarnwick\n", true),
                 {"[Desktop Entry]\nExec=tarnwick\nHidden = true\n", false},
                 {"[Desktop Entry]\nX-GNOME-Autostart-enabled=false\n", false},
                 {"[Desktop Entry]\nHidden=false\n[Desktop Action x]\nHidden=true\n", true},
                 {"", false},
             })
            QVERIFY2(isAutostarted(entry) == starts, entry);
    }

    static void keepsToTheFile() {
        const QTemporaryDir folder;
        qputenv("XDG_CONFIG_HOME", folder.filePath(u"user"_s).toUtf8());
        qputenv("XDG_CONFIG_DIRS", folder.filePath(u"system"_s).toUtf8());
        const QString user = folder.filePath(u"user/autostart/tarnwick.desktop"_s);
        QVERIFY(!LoginItem::isEnabled());
        LoginItem::setEnabled(true);
        QVERIFY(LoginItem::isEnabled());
        QCOMPARE(readFile(user), autostartEntry(QCoreApplication::applicationFilePath()));
        LoginItem::setEnabled(false);
        QVERIFY(!LoginItem::isEnabled() && !QFile::exists(user));

        // The administrator's entry for all is hidden, not changed.
        QVERIFY(writeFile(folder.filePath(u"system/autostart/tarnwick.desktop"_s), autostartEntry(u"/x"_s)));
        QVERIFY(LoginItem::isEnabled());
        LoginItem::setEnabled(false);
        QVERIFY(!LoginItem::isEnabled());
        LoginItem::setEnabled(true);
        QVERIFY(LoginItem::isEnabled());

        QVERIFY(QDir(folder.filePath(u"user"_s)).removeRecursively());
        QVERIFY(writeFile(folder.filePath(u"user"_s), "in the way"));
        LoginItem::setEnabled(false);
        QVERIFY(LoginItem::isEnabled());
    }
};

QTEST_GUILESS_MAIN(LoginItemTest)
#include "tst_loginitem.moc"
