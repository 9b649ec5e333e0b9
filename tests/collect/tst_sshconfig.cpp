#include "Rows.h"
#include "SSHConfigParser.h"
#include "TildeExpansion.h"

#include <QTemporaryDir>
#include <QTest>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// "alias|hostname|user|port|identity file", or "-" for no file; a line for each.
QString described(const QList<SSHConfigHost>& hosts) {
    QStringList texts;
    for (const SSHConfigHost& host : hosts)
        texts << QStringList{host.alias, host.hostname, host.user, QString::number(host.port),
                             host.identityFile.value_or(u"-"_s)}
                     .join(u'|');
    return texts.join(u'\n');
}

} // namespace

class SSHConfigTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsLines_data() { addRows("sshconfig/lines.json", {"text", "expected"}); }
    void readsLines() {
        QFETCH(const QString, text);
        QTEST(described(SSHConfigParser::parse(text, u"/home/me"_s)), "expected");
    }

    void noticesIncludes() {
        for (const char16_t* text : {u"Include x", u"Host a\n\tINCLUDE=~/x y\nHost b"})
            QVERIFY(SSHConfigParser::includes(QStringView(text)));
        for (const char16_t* text : {u"", u"Include", u"#Include x", u"Host Include x", u"IncludeX y"})
            QVERIFY(!SSHConfigParser::includes(QStringView(text)));
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
            return writeFile(path, contents) ? described(SSHConfigParser::parseUserConfig()) : u"cannot write"_s;
        };
        QCOMPARE(hostsIn("Host caf\xc3\xa9\nIdentityFile ~/k"), u"café|café|root|22|%1/k"_s.arg(home.path()));
        for (const char* broken : {"\xe9", "\xc3", "\xed\xa0\x80"}) // Latin-1, cut off, a surrogate
            QCOMPARE(hostsIn("Host a\nHost caf"_ba + broken), QString());
        QVERIFY(QFile::remove(path));
        QVERIFY(QDir().mkdir(path));
        QCOMPARE(SSHConfigParser::parseUserConfig(), QList<SSHConfigHost>());
        QVERIFY(QDir().rmdir(path));
        QCOMPARE(::mkfifo(path.toLocal8Bit().constData(), 0600), 0);
        QCOMPARE(SSHConfigParser::parseUserConfig(), QList<SSHConfigHost>()); // and does not wait for a writer
    }
};

} // namespace tarnwick

QTEST_GUILESS_MAIN(tarnwick::SSHConfigTest)
#include "tst_sshconfig.moc"
