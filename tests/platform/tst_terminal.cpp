#include "Companion.h"
#include "Desktop.h"
#include "Files.h"
#include "StandIns.h"
#include "linux/LinuxTerminal.h"

#include <QProcess>
#include <QTest>

#include <csignal>

using namespace tarnwick;
using namespace Qt::StringLiterals;

class TestTerminal : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(tools_.add(u"shell-of-the-user"_s, "#!/bin/sh\necho \"the user's shell\"\n")); }

    void choosesAnInstalledTerminal() {
        const QString line = u"echo 'a'; ssh \"$b\"\n'"_s;
        const std::pair<QString, QString> rows[] = {
            {u"screen"_s, {}},
            {u"xterm x-terminal-emulator xdg-terminal-exec"_s, u"/opt/xdg-terminal-exec"_s}, // the user's choice
            {u"xterm x-terminal-emulator konsole"_s, u"/opt/x-terminal-emulator -e"_s},      // the system's choice
            {u"xterm gnome-terminal"_s, u"/opt/gnome-terminal --"_s},
            {u"wezterm"_s, u"/opt/wezterm start --"_s},
            {u"kgx alacritty foot"_s, u"/opt/kgx --"_s},
            {u"alacritty foot"_s, u"/opt/alacritty -e"_s},
        };
        for (const auto& row : rows) {
            const QStringList installed = row.first.split(u' ');
            const auto command = terminalCommand(
                line, [&](const QString& name) { return installed.contains(name) ? u"/opt/"_s + name : QString(); });
            QCOMPARE(command.has_value(), !row.second.isEmpty());
            if (!command)
                continue;
            const QStringList words = QStringList(command->executable) + command->arguments;
            QVERIFY2(words.join(u' ').startsWith(row.second + u" /bin/sh -c "_s), qPrintable(words.join(u' ')));
            QCOMPARE(words.last(), line); // one argument, untouched
        }
    }

    void theUsersShellFollows() {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"SHELL"_s, inFolder(u"shell-of-the-user"_s));
        for (const auto& line : {u"true"_s, u"exit 3"_s, u"true #"_s, u"echo 'unfinished"_s, u"kill -INT $PPID $$"_s}) {
            const auto command = terminalCommand(line, [](const QString& name) { return name; });
            QProcess process;
            process.setProcessEnvironment(environment);
            process.setWorkingDirectory(tools_.folder());
            process.start(command->arguments.at(0), command->arguments.mid(1));
            process.closeWriteChannel();
            QVERIFY2(process.waitForFinished(), qPrintable(line));
            QCOMPARE(line.toUtf8() + ": " + process.readAllStandardOutput(), line.toUtf8() + ": the user's shell\n");
        }
    }

    /// A real window: the line runs in it with our environment, and the shell that follows reads from the terminal.
    void opensAWindowThatStays() {
        Companion display;
        const QByteArray screen = display.startScreen();

        // The environment that the terminal gets: no other terminal on PATH, and a shell to probe for afterwards.
        const QByteArray path = qgetenv("PATH");
        QVERIFY(QFile::link(needed(u"xterm"_s), inFolder(u"xterm"_s)));
        qputenv("PATH", QFile::encodeName(tools_.folder()));
        qputenv("DISPLAY", screen);
        qputenv("SHELL", "/bin/sh");
        qputenv("LC_ALL", "C.UTF-8");
        std::signal(SIGPIPE, SIG_IGN); // in this process only
        const QString noted = inFolder(u"noted"_s);
        Desktop::openTerminal(
            u"{ echo \"$DISPLAY $LC_ALL\"; /bin/grep SigIgn /proc/self/status; } >'%1'; exit 1"_s.arg(noted));
        qputenv("PATH", path);

        // As a user would, types into the shell of the window.
        QVERIFY(tools_.add(u"probe"_s, "#!/bin/sh\necho $PPID >\"${0%/*}/shell\"\n"));
        QProcess user;
        user.start(needed(u"xdotool"_s),
                   {u"search"_s, u"--sync"_s, u"--onlyvisible"_s, u"--class"_s, u"xterm"_s, u"mousemove"_s,
                    u"--window"_s, u"%1"_s, u"20"_s, u"20"_s, u"type"_s, u"probe\n"_s});
        QVERIFY2(user.waitForFinished() && user.exitCode() == 0, user.readAllStandardError());
        QTRY_VERIFY_WITH_TIMEOUT(readFile(inFolder(u"shell"_s)).endsWith('\n'), 30'000);

        const QList<QByteArray> lines = readFile(noted).split('\n');
        QCOMPARE(lines.at(0), screen + " C.UTF-8");
        const qulonglong ignored = lines.at(1).mid(int(qstrlen("SigIgn:\t"))).toULongLong(nullptr, 16);
        QCOMPARE(ignored & (1ULL << (SIGPIPE - 1)), 0U);
        // The window closes when that shell ends.
        QCOMPARE(::kill(readFile(inFolder(u"shell"_s)).trimmed().toInt(), SIGHUP), 0);
    }

private:
    [[nodiscard]] QString inFolder(const QString& name) const { return tools_.folder() + u'/' + name; }

    StandIns tools_;
};

QTEST_GUILESS_MAIN(TestTerminal)
#include "tst_terminal.moc"
