#include "Desktop.h"
#include "linux/LinuxTerminal.h"

#include <QFile>
#include <QProcess>
#include <QScopeGuard>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

QString needed(const QString& program, const char* package) {
    QString path = QStandardPaths::findExecutable(program);
    if (path.isEmpty())
        qFatal("This test needs %s: install the Debian package %s", qPrintable(program), package);
    return path;
}

QByteArray contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestTerminal : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { write(u"shell-of-the-user"_s, "echo \"the user's shell\"\n"); }

    void choosesAnInstalledTerminal_data() {
        QTest::addColumn<QStringList>("installed");
        QTest::addColumn<QStringList>("start");
        QTest::newRow("none") << QStringList{u"screen"_s} << QStringList{};
        QTest::newRow("the user's choice") << QStringList{u"xterm"_s, u"x-terminal-emulator"_s, u"xdg-terminal-exec"_s}
                                           << QStringList{u"/opt/xdg-terminal-exec"_s};
        QTest::newRow("the system's choice") << QStringList{u"xterm"_s, u"x-terminal-emulator"_s, u"konsole"_s}
                                             << QStringList{u"/opt/x-terminal-emulator"_s, u"-e"_s};
        QTest::newRow("GNOME") << QStringList{u"xterm"_s, u"gnome-terminal"_s}
                               << QStringList{u"/opt/gnome-terminal"_s, u"--"_s};
        QTest::newRow("two words") << QStringList{u"wezterm"_s} << QStringList{u"/opt/wezterm"_s, u"start"_s, u"--"_s};
    }
    void choosesAnInstalledTerminal() {
        QFETCH(const QStringList, installed);
        QFETCH(const QStringList, start);
        const QString line = u"echo 'a'; ssh \"$b\"\n'"_s;
        const auto command = terminalCommand(
            line, [&](const QString& name) { return installed.contains(name) ? u"/opt/"_s + name : QString(); });
        QCOMPARE(command.has_value(), !start.isEmpty());
        if (!command)
            return;
        QCOMPARE((QStringList{command->executable} + command->arguments).mid(0, start.size()), start);
        QCOMPARE(command->arguments.mid(start.size() - 1, 2), (QStringList{u"/bin/sh"_s, u"-c"_s}));
        QCOMPARE(command->arguments.last(), line); // one argument, untouched
    }

    void theUsersShellFollows_data() {
        QTest::addColumn<QString>("line");
        QTest::newRow("success") << u"true"_s;
        QTest::newRow("failure") << u"exit 3"_s;
        QTest::newRow("comment") << u"true #"_s;
        QTest::newRow("syntax error") << u"echo 'unfinished"_s;
        QTest::newRow("interrupt") << u"kill -INT $PPID $$"_s;
    }
    void theUsersShellFollows() {
        QFETCH(const QString, line);
        const auto command = terminalCommand(line, [](const QString& name) { return name; });
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"SHELL"_s, folder_.filePath(u"shell-of-the-user"_s));
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(folder_.path());
        process.start(command->arguments.at(0), command->arguments.mid(1));
        process.closeWriteChannel();
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.readAllStandardOutput(), "the user's shell\n");
    }

    /// A real window: the line runs in it with our environment, and the shell that follows has the terminal.
    void opensAWindowThatStays() {
        QProcess display;
        display.start(needed(u"Xvfb"_s, "xvfb"), {u"-displayfd"_s, u"1"_s, u"-nolisten"_s, u"tcp"_s});
        QTRY_VERIFY_WITH_TIMEOUT(display.canReadLine(), 30'000);
        const QByteArray number = ':' + display.readLine().trimmed();
        const auto endDisplay = qScopeGuard([&] {
            display.terminate();
            display.waitForFinished();
        });

        // The environment that the terminal gets: no other terminal on PATH, and a shell to probe for afterwards.
        const QByteArray path = qgetenv("PATH");
        QVERIFY(QFile::link(needed(u"xterm"_s, "xterm"), folder_.filePath(u"xterm"_s)));
        qputenv("PATH", QFile::encodeName(folder_.path()));
        qputenv("DISPLAY", number);
        qputenv("SHELL", "/bin/sh");
        qputenv("LC_ALL", "C.UTF-8");
        std::signal(SIGPIPE, SIG_IGN); // ours alone
        const QString noted = folder_.filePath(u"noted"_s);
        Desktop::openTerminal(
            u"{ echo \"$DISPLAY $LC_ALL\"; /bin/grep SigIgn /proc/self/status; } >'%1'; exit 1"_s.arg(noted));
        qputenv("PATH", path);

        // As a user would: the shell in the window takes what is typed there.
        write(u"probe"_s, "echo $PPID >\"${0%/*}/shell\"\n");
        QProcess user;
        user.start(needed(u"xdotool"_s, "xdotool"),
                   {u"search"_s, u"--sync"_s, u"--onlyvisible"_s, u"--class"_s, u"xterm"_s, u"mousemove"_s,
                    u"--window"_s, u"%1"_s, u"20"_s, u"20"_s, u"type"_s, u"probe\n"_s});
        QVERIFY2(user.waitForFinished() && user.exitCode() == 0, user.readAllStandardError());
        QTRY_VERIFY_WITH_TIMEOUT(contents(folder_.filePath(u"shell"_s)).endsWith('\n'), 30'000);

        const QList<QByteArray> lines = contents(noted).split('\n');
        QCOMPARE(lines.at(0), number + " C.UTF-8");
        const qulonglong ignored = lines.at(1).mid(int(qstrlen("SigIgn:\t"))).toULongLong(nullptr, 16);
        QCOMPARE(ignored & (1ULL << (SIGPIPE - 1)), 0U);
        // The shell that answered ends the window with it.
        QCOMPARE(::kill(contents(folder_.filePath(u"shell"_s)).trimmed().toInt(), SIGHUP), 0);
    }

private:
    void write(const QString& name, const QByteArray& script) const {
        QFile file(folder_.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("#!/bin/sh\n" + script) > 0 &&
                file.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
    }

    const QTemporaryDir folder_;
};

QTEST_GUILESS_MAIN(TestTerminal)
#include "tst_terminal.moc"
