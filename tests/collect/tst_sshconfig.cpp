#include "Files.h"
#include "SSHConfigParser.h"
#include "TildeExpansion.h"

#include <QTemporaryDir>
#include <QTest>

#include <ctime>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// "alias|hostname|user|port|identity file", or "-" for no file.
QStringList described(const QList<SSHConfigHost>& hosts) {
    QStringList texts;
    for (const SSHConfigHost& host : hosts)
        texts << QStringList{host.alias, host.hostname, host.user, QString::number(host.port),
                             host.identityFile.value_or(u"-"_s)}
                     .join(u'|');
    return texts;
}

} // namespace

class SSHConfigTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsLines_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("expected");
        const auto row = [](const char* name, const QString& text, const QStringList& expected) {
            QTest::newRow(name) << text << expected;
        };
        const QStringList full{u"db|10.0.0.5|admin|2200|/home/me/.ssh/db_key"_s};
        const QString lines = u"Host db\nHostName 10.0.0.5\nUser admin\nPort 2200\nIdentityFile ~/.ssh/db_key"_s;
        row("every keyword", lines, full);
        row("CR LF", QString(lines).replace(u'\n', u"\r\n"_s), full);
        row("CR only", QString(lines).replace(u'\n', u'\r'), full);
        row("line separators", QString(lines).replace(u'\n', QChar(0x2028)), full);
        row("paragraph separator, next line, form feed",
            u"Host db\u2029HostName 10.0.0.5\u0085User admin\fPort 2200\vIdentityFile ~/.ssh/db_key"_s, full);
        row("any letter case, indented, equals sign",
            u" hOST db\n\tHOSTNAME=10.0.0.5 \t\nuSER=admin\nPORT\t2200\n  IDENTITYFILE   ~/.ssh/db_key"_s, full);
        row("alias alone", u"Host db"_s, {u"db|db|root|22|-"_s});
        row("patterns", u"Host *\nUser a\nHost *.internal\nPort 1\nHost w?b !x\nHost web1 web2"_s,
            {u"w?b !x|w?b !x|root|22|-"_s, u"web1 web2|web1 web2|root|22|-"_s});
        row("lines of a dropped pattern end with it", u"Host a*\nUser x\nHost b"_s, {u"b|b|root|22|-"_s});
        row("defaults before the first block", u"User x\nPort 1\nHost a"_s, {u"a|a|root|22|-"_s});
        row("a Match block's lines reach the block above", u"Host a\nMatch host b\nUser x"_s, {u"a|a|x|22|-"_s});
        row("twice the same alias, later lines win", u"Host a\nUser x\nUser y\nHost a"_s,
            {u"a|a|y|22|-"_s, u"a|a|root|22|-"_s});
        row("comments", u"# Host no\nHost a # not one\n   #User x"_s, {u"a # not one|a # not one|root|22|-"_s});
        row("first separator only", u"Host = a\nHostName= b\nUser\u00a0=c\nPort = 2222"_s, {u"= a|b|=c|22|-"_s});
        row("no value", u"Host\nHost=\nHost a\nHostName\nPort \nUser="_s, {u"a|a|root|22|-"_s});
        row("literal values", u"Host a\nHostName \"%h.x\"\nInclude other\nIdentityFile \"~/k\""_s,
            {u"a|\"%h.x\"|root|22|\"~/k\""_s});
        row("NUL", u"Host a\0b\nUser\0x\nUser y"_s, {u"a\0b|a\0b|y|22|-"_s});
        row("nothing", u"\n\r\n \t "_s, {});
    }
    void readsLines() {
        QFETCH(const QString, text);
        QTEST(described(SSHConfigParser::parse(text, u"/home/me"_s)), "expected");
    }

    void readsPorts() {
        using Limits = std::numeric_limits<qint64>;
        const auto port = [](const QString& value) {
            const auto hosts = SSHConfigParser::parse(u"Host a\nPort 2200\nPort "_s + value, {});
            return hosts.size() == 1 ? hosts.first().port : 0;
        };
        QCOMPARE(port(u"+2222"_s), 2222);
        QCOMPARE(port(u"-1"_s), -1);
        QCOMPARE(port(u"70000"_s), 70000);
        QCOMPARE(port(u"9223372036854775807"_s), Limits::max());
        QCOMPARE(port(u"-9223372036854775808"_s), Limits::min());
        for (const QString& text : {u"abc"_s, u"9223372036854775808"_s, u"+-2"_s, u"0x10"_s, u"2,200"_s, u"1e3"_s,
                                    u"22 # x"_s, u"+"_s, u"22 22"_s, u"٢٢٢"_s, QChar(0x2003) + u"2200"_s})
            QVERIFY2(port(text) == 22, qPrintable(text));
    }

    void expandsTilde() {
        const passwd* root = ::getpwnam("root");
        QVERIFY(root != nullptr);
        const QString rootHome = QString::fromLocal8Bit(root->pw_dir);
        QCOMPARE(expandingTilde(u"~"_s, u"/h"_s), u"/h"_s);
        QCOMPARE(expandingTilde(u"~/.ssh/k"_s, u"/h"_s), u"/h/.ssh/k"_s);
        QCOMPARE(expandingTilde(u"~root"_s, u"/h"_s), rootHome);
        QCOMPARE(expandingTilde(u"~root/.ssh/k"_s, u"/h"_s), rootHome + u"/.ssh/k"_s);
        for (const QString& path : {u"~no-such-user/k"_s, u"/a/~/b"_s, u" ~/k"_s, QString()})
            QCOMPARE(expandingTilde(path, u"/h"_s), path);
    }

    void readsTheUsersFile() {
        QTemporaryDir home;
        qputenv("HOME", home.path().toLocal8Bit());
        QCOMPARE(SSHConfigParser::parseUserConfig(), QList<SSHConfigHost>());
        const QString path = home.filePath(u".ssh/config"_s);
        const auto hostsIn = [&path](const QByteArray& contents) {
            return writeFile(path, contents) ? described(SSHConfigParser::parseUserConfig())
                                             : QStringList{u"cannot write"_s};
        };
        QCOMPARE(hostsIn("Host caf\xc3\xa9\nIdentityFile ~/k"),
                 QStringList(u"café|café|root|22|%1/k"_s.arg(home.path())));
        QCOMPARE(hostsIn("Host a\nHost caf\xe9"), QStringList());      // Latin-1
        QCOMPARE(hostsIn("Host a\nHost caf\xc3"), QStringList());      // cut off
        QCOMPARE(hostsIn("Host a\nHost \xed\xa0\x80"), QStringList()); // a surrogate
        QVERIFY(QFile::remove(path));
        QVERIFY(QDir().mkdir(path));
        QCOMPARE(SSHConfigParser::parseUserConfig(), QList<SSHConfigHost>());
        QVERIFY(QDir().rmdir(path));
        QCOMPARE(::mkfifo(path.toLocal8Bit().constData(), 0600), 0);
        QCOMPARE(SSHConfigParser::parseUserConfig(), QList<SSHConfigHost>()); // and does not wait for a writer
    }

    void isQuick() {
        QString text = u"# "_s + QString(1 << 20, u'x') + u'\n';
        for (int i = 0; i < 5000; ++i)
            text += u"Host h%1\n  HostName 10.0.0.1\n  User u\n  Port 22\n  IdentityFile ~/.ssh/k\n\n"_s.arg(i);
        const std::clock_t start = std::clock(); // of the processor: other programs do not count
        QCOMPARE(SSHConfigParser::parse(text, u"/home/me"_s).size(), 5000);
        const auto milliseconds = (std::clock() - start) * 1000 / CLOCKS_PER_SEC;
        QVERIFY2(milliseconds < 500, qPrintable(QString::number(milliseconds))); // a few, but for sanitizers
    }
};

} // namespace tarnwick

QTEST_GUILESS_MAIN(tarnwick::SSHConfigTest)
#include "tst_sshconfig.moc"
