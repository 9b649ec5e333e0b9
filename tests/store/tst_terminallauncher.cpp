#include "Files.h"
#include "StandIns.h"
#include "TerminalLauncher.h"

#include <QProcess>
#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

const QString enter = u"if command -v bash >/dev/null 2>&1; then exec bash; else exec sh; fi"_s;

Server server(const QString& name, const QString& user, const QString& host) {
    Server server;
    server.name = name;
    server.user = user;
    server.host = host;
    return server;
}

ContainerInfo container(const QString& name, const QString& id = u"4f2a"_s) {
    return {id, name, u"nginx"_s, u"Up"_s, u"running"_s, {}};
}

/// A folder to run a command line in, with an `ssh` and a `docker` that record their arguments. This `ssh` runs its
/// remote command in a shell, as a real login does.
class Bench {
public:
    Bench() {
        const bool added = tools_.add(u"ssh"_s, "#!/bin/sh\nprintf '%s\\0' \"$@\" >ssh.called\n"
                                                "while getopts ti:p: _; do :; done\n"
                                                "shift \"$OPTIND\"\n"
                                                "[ $# -eq 0 ] || exec sh -c \"$*\"\n") &&
                           tools_.add(u"docker"_s, "#!/bin/sh\nprintf '%s\\0' \"$@\" >docker.called\n");
        if (!added)
            qFatal("Cannot write to %s", qPrintable(tools_.folder()));
    }

    /// Runs the line; returns what it prints.
    QString run(const QStringList& shell, const QString& line) const {
        QProcess process;
        process.setWorkingDirectory(tools_.folder());
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"PATH"_s, tools_.searchPath());
        process.setProcessEnvironment(environment);
        const bool interactive = shell.last() == u"-i";
        const QStringList arguments = interactive ? shell.mid(1) : shell.mid(1) + QStringList{u"-c"_s, line};
        process.start(shell.first(), arguments);
        if (interactive)
            process.write(line.toUtf8() + '\n');
        process.closeWriteChannel();
        return process.waitForFinished() ? QString::fromUtf8(process.readAllStandardOutput()) : process.errorString();
    }

    QStringList called(const QString& program) const {
        return QString::fromUtf8(readFile(tools_.folder() + u'/' + program + u".called"_s)).split(QChar::Null);
    }

    bool isUntouched() const { return QDir(tools_.folder()).entryList(QDir::Files).filter(u"pwned"_s).isEmpty(); }

private:
    StandIns tools_;
};

} // namespace

class TestTerminalLauncher : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void harmlessValuesGiveThePlainLine() {
        Server web = server(u"web-1"_s, u"deploy"_s, u"192.0.2.10"_s);
        web.port = 2222;
        QCOMPARE(TerminalLauncher::serverCommandLine(web),
                 u"echo 'Tarnwick: Connecting to web-1...'; ssh -p 2222 deploy@192.0.2.10"_s);
        web.customSshKeyPath = u"~/.ssh/id_ed25519"_s;
        QCOMPARE(TerminalLauncher::serverCommandLine(web), u"echo 'Tarnwick: Connecting to web-1...'; "
                                                           "ssh -i '~/.ssh/id_ed25519' -p 2222 deploy@192.0.2.10"_s);
        QCOMPARE(TerminalLauncher::containerCommandLine(web, container(u"api"_s)),
                 u"echo 'Tarnwick: Connecting to container [api] on web-1...'; "
                 "ssh -t -i '~/.ssh/id_ed25519' -p 2222 deploy@192.0.2.10 \"docker exec -it api "
                 "sh -c 'if command -v bash >/dev/null 2>&1; then exec bash; else exec sh; fi'\""_s);

        // Nothing is validated: an empty user and an empty key are used as they are.
        Server bare = server(u"Büro 2 (alt)"_s, u""_s, u"fe80::1%eth0"_s);
        bare.customSshKeyPath = u""_s;
        bare.port = 65535;
        QCOMPARE(TerminalLauncher::serverCommandLine(bare),
                 u"echo 'Tarnwick: Connecting to Büro 2 (alt)...'; ssh -i '' -p 65535 @fe80::1%eth0"_s);

        Server here = web;
        here.isLocal = true;
        QCOMPARE(TerminalLauncher::serverCommandLine(here), u"echo 'Tarnwick: Connected to local machine'; echo ''"_s);
        QCOMPARE(TerminalLauncher::containerCommandLine(here, container(u""_s)),
                 u"echo 'Tarnwick: Connecting to container [4f2a]...'; docker exec -it 4f2a "
                 "sh -c 'if command -v bash >/dev/null 2>&1; then exec bash; else exec sh; fi'"_s);
        QCOMPARE(TerminalLauncher::appleScript.size(), 133);
    }

    void hostileValuesStayInPlace_data() {
        QTest::addColumn<QString>("value");
        QTest::newRow("both quotes") << u"x$(touch pwned)'\";touch pwned"_s;
        QTest::newRow("backquotes") << u"`touch pwned`\"`touch pwned`\"${HOME}"_s;
        QTest::newRow("separators") << u"a;touch pwned|touch pwned&touch pwned>pwned #"_s;
        QTest::newRow("lines") << u"a\ntouch pwned\r\n"_s;
        QTest::newRow("echo's escapes") << u"a\\c\\033]0;\\x1b\\n%s%d\\"_s;
        QTest::newRow("backslash before quotes") << u"\\';touch pwned;\\\\'\\\";touch pwned;\""_s;
        QTest::newRow("history") << u"!! !touch wow!\"!!\""_s;
        QTest::newRow("terminal controls") << u"\x1b]0;pwned\a\x7f\u009b31m\t\x15touch pwned\r"_s;
        QTest::newRow("end of string") << QString(QChar::Null);
        QTest::newRow("an option of ssh") << u"-oProxyCommand=touch pwned"_s;
        QTest::newRow("an option of docker") << u"--privileged"_s;
        QTest::newRow("end of options") << u"--"_s;
        QTest::newRow("patterns") << u"*?[a-z]{a,b}"_s;
        QTest::newRow("home") << u"~"_s;
        QTest::newRow("blanks") << u" a  b\u00a0"_s;
        QTest::newRow("other scripts") << u"сервер-木-🐳"_s;
    }
    /// Real shells run lines that have the value in every place. It must be printed and reach both programs unaltered,
    /// except for control characters, and nothing else may run.
    void hostileValuesStayInPlace() {
        QFETCH(const QString, value);
        Server remote = server(value, value, value);
        remote.customSshKeyPath = value;
        Server local = remote;
        local.isLocal = true;
        QString seen = value;
        for (QChar& c : seen)
            c = c.category() == QChar::Other_Control ? QChar(u'?') : c;

        const QStringList endOfOptions = value.startsWith(u'-') ? QStringList{u"--"_s} : QStringList();
        const QStringList login =
            QStringList{u"-i"_s, seen, u"-p"_s, u"22"_s} + endOfOptions + QStringList{seen + u'@' + seen};
        const QStringList exec =
            QStringList{u"exec"_s, u"-it"_s} + endOfOptions + QStringList{seen, u"sh"_s, u"-c"_s, enter, u""_s};

        struct Case {
            QString line;
            QString printed;
            QStringList ssh; ///< as its arguments begin
            QStringList docker;
        };
        const QStringList none{QString()};
        const Case cases[]{
            {TerminalLauncher::serverCommandLine(remote), u"Connecting to %1"_s, login + none, none},
            {TerminalLauncher::containerCommandLine(remote, container(value)), u"Connecting to container [%1] on %1"_s,
             QStringList{u"-t"_s} + login, exec},
            {TerminalLauncher::containerCommandLine(local, container(value)), u"Connecting to container [%1]"_s, none,
             exec},
        };
        const QList<QStringList> shells{
            {u"dash"_s}, {u"bash"_s}, {u"busybox"_s, u"sh"_s}, {u"bash"_s, u"--norc"_s, u"--noprofile"_s, u"-i"_s}};
        for (const QStringList& shell : shells)
            for (const Case& row : cases) {
                const Bench bench;
                QCOMPARE(bench.run(shell, row.line),
                         u"Tarnwick: "_s + QString(row.printed).replace(u"%1"_s, seen) + u"...\n"_s);
                QCOMPARE(bench.called(u"ssh"_s).mid(0, row.ssh.size()), row.ssh);
                QCOMPARE(bench.called(u"docker"_s), row.docker);
                QVERIFY(bench.isUntouched());
            }
    }
};

QTEST_GUILESS_MAIN(TestTerminalLauncher)
#include "tst_terminallauncher.moc"
