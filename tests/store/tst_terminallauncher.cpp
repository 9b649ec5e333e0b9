#include "Rows.h"
#include "SSHMetricsCollector.h"
#include "StandIns.h"
#include "TerminalLauncher.h"

#include <QProcess>

#include <functional>
#include <utility>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

const QString enter = u"if command -v bash >/dev/null 2>&1; then exec bash; else exec sh; fi"_s;

Server server(const QString& name, const QString& user, const QString& host, const std::optional<QString>& key = {}) {
    Server server;
    server.name = name;
    server.user = user;
    server.host = host;
    server.port = 2222;
    server.customSshKeyPath = key;
    return server;
}

ContainerInfo container(const QString& name) {
    return {u"4f2a"_s, name, u"nginx"_s, u"Up"_s, u"running"_s, {}};
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
        process.setProcessEnvironment(tools_.environment());
        const bool interactive = shell.last() == u"-i";
        process.start(shell.first(), shell.mid(1) + (interactive ? QStringList() : QStringList{u"-c"_s, line}));
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
    void eachOpensATerminalWithItsLine() {
        StandIns tools; // with a terminal that notes the line
        QVERIFY(
            tools.add(u"xdg-terminal-exec"_s,
                      "#!/bin/sh\nfor line; do :; done\nprintf %s \"$line\" >\"$0.new\"; mv \"$0.new\" \"$0.line\"\n"));
        const QString noted = tools.folder() + u"/xdg-terminal-exec.line"_s;
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", tools.searchPath().toLocal8Bit());
        const Server web = server(u"web-1"_s, u"deploy"_s, u"192.0.2.10"_s);
        using namespace TerminalLauncher;
        const std::pair<std::function<void()>, QString> rows[] = {
            {[] { openInTerminal(u"echo 'a b'"_s); }, u"echo 'a b'"_s},
            {[&] { openServerSSH(web); }, serverCommandLine(web)},
            {[&] { openDockerContainer(web, container(u"api"_s)); }, containerCommandLine(web, container(u"api"_s))}};
        for (const auto& [open, line] : rows) {
            QFile::remove(noted);
            open();
            QTRY_COMPARE(QString::fromUtf8(readFile(noted)), line);
        }
        qputenv("PATH", path);
    }

    void harmlessValuesGiveThePlainLine() {
        const Server web = server(u"web-1"_s, u"deploy"_s, u"192.0.2.10"_s);
        const Server withKey = server(u"web-1"_s, u"deploy"_s, u"192.0.2.10"_s, u"~/.ssh/id_ed25519"_s);
        // Nothing is validated: an empty user and an empty key are used as they are.
        Server bare = server(u"Büro 2 (alt!)"_s, u""_s, u"fe80::1%eth0"_s, u""_s);
        bare.port = 65535;
        Server here = withKey;
        here.isLocal = true;
        using namespace TerminalLauncher;
        const QStringList lines{serverCommandLine(web),
                                containerCommandLine(withKey, container(u"api"_s)),
                                serverCommandLine(bare),
                                containerCommandLine(here, container(u""_s)),
                                serverCommandLine(here),
                                serverCommandLine(withKey),
                                containerLogCommandLine(withKey, container(u"api"_s)),
                                containerLogCommandLine(here, container(u""_s))};
        const QByteArray expected = readFile(QStringLiteral(TARNWICK_FIXTURES "/terminal-lines.txt"));
        QCOMPARE(lines, QString::fromUtf8(expected.trimmed()).split(u'\n'));
    }

    void hostileValuesStayInPlace_data() { addRows("hostile-values.json", {"value"}); }
    /// Real shells run lines that have the value in every place. It must be printed and reach both programs unaltered,
    /// except for control characters, and nothing else may run.
    void hostileValuesStayInPlace() {
        QFETCH(const QString, value);
        const Server remote = server(value, value, value, value);
        Server local = remote;
        local.isLocal = true;
        QString seen = value;
        for (QChar& c : seen)
            c = c.category() == QChar::Other_Control ? QChar(u'?') : c;

        const QStringList endOfOptions = value.startsWith(u'-') ? QStringList{u"--"_s} : QStringList();
        const QStringList login =
            QStringList{u"-i"_s, seen, u"-p"_s, u"2222"_s} + endOfOptions + QStringList{seen + u'@' + seen};
        const QStringList exec =
            QStringList{u"exec"_s, u"-it"_s} + endOfOptions + QStringList{seen, u"sh"_s, u"-c"_s, enter, u""_s};
        const QStringList logs =
            QStringList{u"logs"_s, u"--tail"_s, u"200"_s} + endOfOptions + QStringList{seen, u""_s};
        const QStringList stop = QStringList{u"stop"_s} + endOfOptions + QStringList{seen, u""_s};
        const QString connecting = u"Connecting to "_s;
        const QString reading = u"Last 200 log lines of "_s;

        using namespace TerminalLauncher;
        using SSHMetricsCollector::actionRequest;
        const QStringList none{QString()};
        const QList<std::tuple<QString, QString, QStringList, QStringList>> cases{
            // the line, what it prints, how the arguments of ssh begin, and those of docker
            {serverCommandLine(remote), connecting + u"%1"_s, login + none, none},
            {containerCommandLine(remote, container(value)), connecting + u"container [%1] on %1"_s,
             QStringList{u"-t"_s} + login, exec},
            {containerCommandLine(local, container(value)), connecting + u"container [%1]"_s, none, exec},
            {containerLogCommandLine(remote, container(value)), reading + u"container [%1] on %1"_s, login, logs},
            {containerLogCommandLine(local, container(value)), reading + u"container [%1]"_s, none, logs},
            {actionRequest(remote, value, ContainerAction::stop).arguments.last(), {}, none, stop},
            {actionRequest(local, value, ContainerAction::stop).arguments.last(), {}, none, stop}};
        const QList<QStringList> shells{
            {u"dash"_s}, {u"bash"_s}, {u"busybox"_s, u"sh"_s}, {u"bash"_s, u"--norc"_s, u"--noprofile"_s, u"-i"_s}};
        for (const QStringList& shell : shells)
            for (const auto& [line, printed, ssh, docker] : cases) {
                const Bench bench;
                const QString greeting = u"Tarnwick: "_s + QString(printed).replace(u"%1"_s, seen) + u"...\n"_s;
                QCOMPARE(bench.run(shell, line), printed.isEmpty() ? QString() : greeting);
                QCOMPARE(bench.called(u"ssh"_s).mid(0, ssh.size()), ssh);
                QCOMPARE(bench.called(u"docker"_s), docker);
                QVERIFY(bench.isUntouched());
            }
    }
};

QTEST_GUILESS_MAIN(TestTerminalLauncher)
#include "tst_terminallauncher.moc"
