#include "NoThreads.h"
#include "ProcessRunner.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace tarnwick;
using End = ProcessOutcome::End;

Q_DECLARE_METATYPE(tarnwick::ProcessOutcome::End)

namespace {

constexpr qint64 mebibyte = qint64{1024} * 1024;

ProcessRequest shell(const QString& script) {
    return {.executable = u"/bin/sh"_s,
            .arguments = {u"-c"_s, script},
            .standardOutputLimit = 8 * mebibyte,
            .standardErrorKept = 65536};
}

ProcessOutcome outcomeOf(const ProcessRequest& request) {
    return ProcessRunner::run(request).result();
}

QByteArray outputOf(const QString& script) {
    return outcomeOf(shell(script)).standardOutput;
}

/// The signals in a line such as "SigIgn:" of a process's status, one bit each, without the two that the C library uses
/// itself (32 and 33); absent when there is no such line.
std::optional<quint64> signalMask(const QByteArray& status, const QByteArray& field) {
    for (const QByteArray& line : status.split('\n'))
        if (line.startsWith(field))
            return line.mid(field.size()).trimmed().toULongLong(nullptr, 16) & ~(quint64{3} << 31);
    return std::nullopt;
}

/// The signals that were ignored when this test started.
std::optional<quint64> ignoredAtStart;

/// Whether the process has ended, even when its parent has not read its status yet.
bool isGone(const QByteArray& process) {
    QFile file(u"/proc/%1/stat"_s.arg(process.toInt()));
    return !file.open(QIODevice::ReadOnly) || file.readAll().contains(") Z ");
}

} // namespace

class ProcessRunnerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    static void initTestCase() {
        // A soft limit below the hard one, to see it raised here and given back to children.
        rlimit limit{};
        QCOMPARE(::getrlimit(RLIMIT_NOFILE, &limit), 0);
        QVERIFY2(limit.rlim_max >= 5000, "a thousand children need 5000 open files");
        limit.rlim_cur = 256;
        QCOMPARE(::setrlimit(RLIMIT_NOFILE, &limit), 0);
        ProcessRunner::raiseOpenFileLimit();
        QCOMPARE(::getrlimit(RLIMIT_NOFILE, &limit), 0);
        QCOMPARE(limit.rlim_cur, limit.rlim_max);
    }

    static void end_data() {
        QTest::addColumn<QString>("script");
        QTest::addColumn<End>("end");
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<QByteArray>("error");
        const auto row = [](const char* name, const QString& script, End end, int status, const QByteArray& output,
                            const QByteArray& error = {}) {
            QTest::newRow(name) << script << end << status << output << error;
        };
        row("success", u"echo a; echo b >&2"_s, End::exited, 0, "a\n", "b\n");
        row("status", u"echo a; exit 255"_s, End::exited, 255, "a\n");
        row("a status like a signal's", u"exit 137"_s, End::exited, 137, {});
        row("SIGTERM", u"printf a; kill -TERM $$"_s, End::signalled, SIGTERM, "a");
        row("SIGSEGV", u"kill -SEGV $$"_s, End::signalled, SIGSEGV, {});
        row("SIGPIPE", u"kill -PIPE $$; exit 3"_s, End::signalled, SIGPIPE, {});
        row("bytes that are no text", uR"(printf '\377\000\303x')"_s, End::exited, 0, QByteArray("\xff\0\xc3x", 4));
        row("nothing to read", u"cat; echo $?"_s, End::exited, 0, "0\n");
        row("a grandchild keeps the pipes", u"sleep 30 & echo a; echo b >&2"_s, End::exited, 0, "a\n", "b\n");
    }
    static void end() {
        QFETCH(const QString, script);
        QElapsedTimer clock;
        clock.start();
        const ProcessOutcome outcome = outcomeOf(shell(script));
        QVERIFY(outcome.elapsed > 0ns);
        QVERIFY(outcome.elapsed < 20s);
        QVERIFY(outcome.elapsed <= std::chrono::nanoseconds(clock.nsecsElapsed()));
        QTEST(outcome.end, "end");
        QTEST(outcome.status, "status");
        QTEST(outcome.standardOutput, "output");
        QTEST(outcome.standardError, "error");
    }

    static void launchFailure() {
        const auto reasonOf = [](const QString& executable, const QStringList& arguments = {}) {
            const ProcessOutcome outcome = outcomeOf({.executable = executable, .arguments = arguments});
            return outcome.end == End::failedToStart && !outcome.succeeded() ? outcome.launchError : u"started"_s;
        };
        QCOMPARE(reasonOf(u"/no/such: file"_s), u"No such file or directory"_s);
        QCOMPARE(reasonOf(u"/etc/passwd"_s), u"Permission denied"_s);
        QCOMPARE(reasonOf(u"/tmp"_s), u"Permission denied"_s);
        QCOMPARE(reasonOf(u"/bin/sh"_s, {u"-c"_s, u"echo a"_s + QChar(0)}), u"Invalid argument"_s);
        QCOMPARE(reasonOf(u"/bin/true"_s, {QString(mebibyte, u'a')}), u"Argument list too long"_s);
    }

    static void noFilesLeft() {
        // By now the worker is running, and the sanitizer, which opens files for that, has seen a failed launch.
        QCOMPARE(outcomeOf({}).end, End::failedToStart);
        rlimit limit{};
        QCOMPARE(::getrlimit(RLIMIT_NOFILE, &limit), 0);
        const rlimit before = limit;
        limit.rlim_cur = 3;
        QCOMPARE(::setrlimit(RLIMIT_NOFILE, &limit), 0);
        const ProcessOutcome outcome = outcomeOf(shell(u"echo a"_s));
        QCOMPARE(::setrlimit(RLIMIT_NOFILE, &before), 0);
        QCOMPARE(outcome.end, End::failedToStart);
        QVERIFY(!outcome.launchError.isEmpty());
    }

    /// A second copy of this program, in a terminal.
    static void noTerminal() {
        QProcess script;
        script.start(u"/usr/bin/script"_s,
                     {u"-qec"_s, QCoreApplication::applicationFilePath() + u" --terminal"_s, u"/dev/null"_s});
        QVERIFY2(script.waitForFinished(), qPrintable(script.errorString()));
        QCOMPARE(script.readAll().trimmed(), "ours, not the child's");
    }

    static void childSetUp() {
        qputenv("LC_ALL", "de_DE.UTF-8");
        qputenv("TARNWICK_TEST", "kept");
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "SSH_ASKPASS"})
            qputenv(name, "x");
        QCOMPARE(outputOf(u"echo $LC_ALL $TARNWICK_TEST $DISPLAY$WAYLAND_DISPLAY$SSH_ASKPASS"_s), "C kept\n");
        QCOMPARE(outputOf(u"ulimit -Sn"_s), "256\n");

        // It leads its process group, blocks no signal, and ignores only those that were ignored when this test
        // started.
        QCOMPARE(outputOf(u"set -- $(cat /proc/$$/stat); [ $1 = $5 ] && echo leader"_s), "leader\n");
        QVERIFY(ignoredAtStart);
        const QByteArray status = outputOf(u"exec cat /proc/self/status"_s);
        QCOMPARE(signalMask(status, "SigBlk:"), 0);
        QCOMPARE(signalMask(status, "SigIgn:").value_or(~quint64{0}) & ~*ignoredAtStart, 0);
    }

    static void onlyStandardStreamsAreOpen() {
        const int leak = ::open("/dev/zero", O_RDONLY); // NOLINT(android-cloexec-open): as careless libraries do
        const QFuture<ProcessOutcome> other = ProcessRunner::run(shell(u"exec sleep 0.5"_s));
        const QByteArrayList open = outputOf(u"for f in /proc/$$/fd/*; do readlink $f; done"_s).trimmed().split('\n');
        ::close(leak);
        QVERIFY2(open.size() == 3, open.join(' '));
        QCOMPARE(open.at(0), "/dev/null");
        QVERIFY2(open.at(1).startsWith("pipe:") && open.at(2).startsWith("pipe:"), open.join(' '));
    }

    static void notCaptured() {
        const ProcessOutcome outcome = outcomeOf(
            {.executable = u"/bin/sh"_s, .arguments = {u"-c"_s, u"readlink /proc/$$/fd/1 | grep -qx /dev/null"_s}});
        QVERIFY(outcome.succeeded());
        QVERIFY(outcome.standardOutput.isEmpty());
    }

    static void outputLimits() {
        ProcessRequest request = shell(u"head -c 8388608 /dev/zero; head -c 100000 /dev/zero >&2"_s);
        ProcessOutcome outcome = outcomeOf(request);
        QVERIFY(outcome.succeeded());
        QCOMPARE(outcome.standardOutput.size(), 8 * mebibyte);
        QCOMPARE(outcome.standardError.size(), 65536);

        request = shell(u"head -c 8388609 /dev/zero; exec sleep 30"_s);
        outcome = outcomeOf(request);
        QCOMPARE(outcome.end, End::outputTooLarge);
        QVERIFY(outcome.elapsed < 20s);
        QCOMPARE(outcome.standardOutput.size(), 8 * mebibyte);
    }

    /// Both limits also kill what the child started.
    static void limitKillsTheGroup_data() {
        QTest::addColumn<QString>("flood");
        QTest::addColumn<End>("end");
        QTest::newRow("time") << u":"_s << End::timedOut;
        QTest::newRow("output") << u"yes"_s << End::outputTooLarge;
    }
    static void limitKillsTheGroup() {
        QFETCH(const QString, flood);
        QFETCH(const End, end);
        ProcessRequest request = shell(u"trap '' TERM; sleep 300 & echo $$ $!; %1; wait"_s.arg(flood));
        request.timeLimit = end == End::timedOut ? 300ms : 30s;
        const ProcessOutcome outcome = outcomeOf(request);
        QCOMPARE(outcome.end, end);
        if (end == End::timedOut) {
            QVERIFY(outcome.elapsed >= 300ms);
            QVERIFY(outcome.elapsed < 5s);
        }
        const QByteArrayList processes = outcome.standardOutput.left(outcome.standardOutput.indexOf('\n')).split(' ');
        QCOMPARE(processes.size(), 2);
        for (const QByteArray& process : processes)
            QTRY_VERIFY_WITH_TIMEOUT(isGone(process), 30'000);
    }

    static void runsAgainOnceThreadsCanBeMade() {
        ProcessRunner::endAll();
        {
            const NoThreads scarce;
            const ProcessOutcome outcome = outcomeOf(shell(u"echo a"_s));
            QCOMPARE(outcome.end, End::failedToStart);
            QCOMPARE(outcome.launchError, qt_error_string(EAGAIN));
        }
        QCOMPARE(outputOf(u"echo a"_s), "a\n");
    }

    /// With hundreds at once, each has the time of its own child: not that of the children before it, and not that in
    /// which others after it were started.
    static void elapsedIsTheChildsOwn() {
        constexpr qsizetype count = 300;
        QElapsedTimer clock;
        clock.start();
        QList<QFuture<ProcessOutcome>> futures;
        for (qsizetype i = 0; i < count; ++i)
            futures.append(ProcessRunner::run({.executable = u"/bin/true"_s, .arguments = {}}));
        QList<std::chrono::nanoseconds> elapsed;
        for (const QFuture<ProcessOutcome>& future : futures)
            elapsed.append(future.result().elapsed);
        const std::chrono::nanoseconds all(clock.nsecsElapsed());
        std::ranges::sort(elapsed);
        const auto inAll = [&](std::chrono::nanoseconds part) {
            return static_cast<double>(part.count()) / static_cast<double>(all.count());
        };
        const double median = inAll(elapsed.at(count / 2));
        QVERIFY2(median < 0.25, qPrintable(QString::number(median)));
    }

    static void manyAtOnce_data() {
        QTest::addColumn<bool>("isPaced");
        QTest::newRow("at once") << false;
        QTest::newRow("paced") << true;
    }
    /// Children that hang until a gate opens: all that are to run at once do. The paced ones fill the window, in their
    /// order, and whatever is to run at once does not wait for them.
    static void manyAtOnce() {
        QFETCH(const bool, isPaced);
        const int count = isPaced ? 200 : 1000;
        const QTemporaryDir folder;
        const QByteArray gate = QFile::encodeName(folder.filePath(u"gate"_s));
        QCOMPARE(::mkfifo(gate.constData(), 0600), 0);
        const int opened = ::open(gate.constData(), O_RDWR | O_CLOEXEC);
        QVERIFY(opened >= 0);
        const auto started = [path = folder.filePath(u"here"_s)] {
            QFile here(path);
            return here.open(QIODevice::ReadOnly) ? here.readAll().trimmed().split('\n') : QByteArrayList();
        };
        QList<QFuture<ProcessOutcome>> futures;
        QElapsedTimer clock;
        clock.start();
        for (int i = 0; i < count; ++i) {
            ProcessRequest request =
                shell(u"cd %1; echo %2 >> here; read line < gate; echo x"_s.arg(folder.path()).arg(i));
            request.timeLimit = 2min; // the first waits for the last
            request.launch = isPaced ? ProcessRequest::Launch::paced : ProcessRequest::Launch::atOnce;
            futures.append(ProcessRunner::run(request));
        }
        QVERIFY2(clock.elapsed() < 1000, "the caller waited for its children");
        const auto urgent = ProcessRunner::run(shell(u"echo now"_s));
        if (isPaced) {
            QTRY_COMPARE_GE_WITH_TIMEOUT(started().size(), 16, 60'000);
            QCOMPARE(urgent.result().standardOutput, "now\n");
            const QByteArrayList numbers = started();
            const qint64 windows = 1 + clock.elapsed() / 5000; // who hangs gives its place up
            for (const QByteArray& number : numbers)
                QVERIFY2(number.toInt() < 64 * windows, number);
            QVERIFY(numbers.size() < count);
        } else {
            QTRY_COMPARE_WITH_TIMEOUT(started().size(), count, 60'000);
        }

        QCOMPARE(::write(opened, QByteArray(count, '\n').constData(), static_cast<size_t>(count)), count);
        for (const QFuture<ProcessOutcome>& future : futures) {
            QVERIFY(future.result().succeeded());
            QCOMPARE(future.result().standardOutput, "x\n");
        }
        ::close(opened);
    }

    static void detached() {
        const QTemporaryDir folder;
        const QString script =
            u"open=$(readlink /proc/$$/fd/[012]); { cut -d' ' -f6 /proc/$$/stat; "
            "echo $1 $LC_ALL; ulimit -Sn; echo $open; } > %1/new; mv %1/new %1/done"_s.arg(folder.path());
        qputenv("LC_ALL", "C.UTF-8");
        QVERIFY(ProcessRunner::startDetached(u"/bin/sh"_s, {u"-c"_s, script, u"sh"_s, u"a 'b\"$c"_s}));
        QFile done(folder.filePath(u"done"_s));
        QTRY_VERIFY(done.exists());
        QVERIFY(done.open(QIODevice::ReadOnly));
        QVERIFY2(done.readLine().toInt() != ::getsid(0), "the same session");
        QCOMPARE(done.readAll(), "a 'b\"$c C.UTF-8\n256\n/dev/null /dev/null /dev/null\n");
        QVERIFY(!ProcessRunner::startDetached(u"/no/such/file"_s, {}));
    }

    static void applicationExit_data() {
        QTest::addColumn<QString>("way");
        QTest::addColumn<QByteArray>("output");
        QTest::newRow("application destroyed") << u"destroy"_s << "11"_ba;
        QTest::newRow("exit() with the application alive") << u"exit"_s << ""_ba;
        QTest::newRow("killed") << u"kill"_s << ""_ba; // what the children started may live on
    }

    /// A second copy of this program ends while children run, and leaves none behind.
    static void applicationExit() {
        QFETCH(const QString, way);
        const QTemporaryDir folder;
        QProcess program;
        program.setProcessChannelMode(QProcess::MergedChannels);
        program.start(QCoreApplication::applicationFilePath(), {u"--end"_s, way, folder.filePath(u"ids"_s)});
        QVERIFY(program.waitForFinished());
        const QByteArray output = program.readAll();
        const bool isKilled = way == u"kill";
        QVERIFY2((program.exitStatus() == QProcess::NormalExit && program.exitCode() == 0) || isKilled, output);
        QTEST(output, "output");
        QFile ids(folder.filePath(u"ids"_s));
        QVERIFY(ids.open(QIODevice::ReadOnly));
        const QByteArrayList children = ids.readAll().simplified().split(' ');
        QCOMPARE(children.size(), 4);
        for (qsizetype i = 0; i < 4; i += isKilled ? 2 : 1)
            QTRY_VERIFY(isGone(children.at(i)));
        for (qsizetype i = 1; i < 4 && isKilled; i += 2)
            ::kill(children.at(i).toInt(), SIGKILL);
    }
};

namespace {

/// Ends the application in this way while two children run, and says which futures were cancelled.
int endApplication(int& argc, char** argv) {
    const QByteArray way = argv[2];
    const QString ids = QFile::decodeName(argv[3]);
    auto application = std::make_unique<QCoreApplication>(argc, argv);
    const ProcessRequest request = shell(u"sleep 300 & echo $$ $! >> %1; wait"_s.arg(ids));
    const QList<QFuture<ProcessOutcome>> running{ProcessRunner::run(request), ProcessRunner::run(request)};
    const bool started = QTest::qWaitFor([&] {
        QFile file(ids);
        return file.open(QIODevice::ReadOnly) && file.readAll().count('\n') == 2;
    });
    if (!started)
        return 1;
    if (way == "kill")
        ::raise(SIGKILL);
    if (way == "exit")
        std::exit(0); // NOLINT(concurrency-mt-unsafe)
    application.reset();
    for (const QFuture<ProcessOutcome>& future : running)
        std::printf("%d", future.isFinished() && future.isCanceled());
    return ProcessRunner::run(request).isCanceled() ? 0 : 2;
}

} // namespace

int main(int argc, char** argv) {
    if (argc == 4 && qstrcmp(argv[1], "--end") == 0)
        return endApplication(argc, argv);
    if (argc == 2 && qstrcmp(argv[1], "--terminal") == 0) {
        const QCoreApplication application(argc, argv);
        const bool isOurs = QFile(u"/dev/tty"_s).open(QIODevice::ReadOnly);
        const bool isChilds = outcomeOf(shell(u": </dev/tty"_s)).succeeded();
        return std::printf("%s, %s the child's", isOurs ? "ours" : "not ours", isChilds ? "also" : "not") < 0;
    }
    std::signal(SIGPIPE, SIG_DFL); // children expect the default, even if it was ignored when this test started
    QFile status(u"/proc/self/status"_s);
    if (status.open(QIODevice::ReadOnly))
        ignoredAtStart = signalMask(status.readAll(), "SigIgn:");
    const QCoreApplication application(argc, argv);
    ProcessRunnerTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_processrunner.moc"
