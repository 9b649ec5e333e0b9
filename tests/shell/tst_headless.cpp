// The program itself, without a display, from a fresh home: real probes of real hosts.

#include "../platform/Companion.h"
#include "DesktopRig.h"
#include "OpenSshServer.h"
#include "ProbeScripts.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QLibraryInfo>
#include <QRegularExpression>

#include <csignal>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

/// The program under test with a home of its own and no desktop.
class Program : public QProcess {
public:
    explicit Program(const QString& home, const QString& executable = QStringLiteral(TARNWICK_EXECUTABLE),
                     const QStringList& arguments = {}, const QString& faults = {}) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const QString& name : {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s, u"DBUS_SESSION_BUS_ADDRESS"_s,
                                    u"XDG_DATA_HOME"_s, u"XDG_RUNTIME_DIR"_s, u"QT_QPA_PLATFORM"_s})
            environment.remove(name);
        environment.insert(u"HOME"_s, home);
        if (!faults.isEmpty()) {
            environment.insert(u"FAULTS"_s, faults);
            environment.insert(u"LD_PRELOAD"_s, QStringLiteral(FAULTY_SYSTEM));
            environment.insert(u"ASAN_OPTIONS"_s, u"verify_asan_link_order=0"_s);
        }
        setProcessEnvironment(environment);
        start(executable, arguments);
    }
    ~Program() override {
        kill();
        waitForFinished(5'000);
    }
    /// Every line printed so far.
    QStringList lines() {
        printed_ += readAllStandardOutput();
        return QString::fromUtf8(printed_).split(u'\n', Qt::SkipEmptyParts);
    }

private:
    QByteArray printed_;
};

QByteArray hostBlock(const QString& alias, const OpenSshServer& server) {
    return u"Host %1\n  HostName %2\n  Port %3\n  User %4\n  IdentityFile %5\n"_s
        .arg(alias, server.address(), QString::number(server.port()), server.user(), server.keyPath())
        .toUtf8();
}

QJsonObject probedByHand(const QString& searchPath) {
    QProcess shell;
    shell.start(u"/usr/bin/env"_s, {u"PATH="_s + searchPath, u"/bin/sh"_s, u"-c"_s, ProbeScripts::remote()});
    shell.waitForFinished();
    return QJsonDocument::fromJson(shell.readAllStandardOutput()).object();
}

/// What the stored servers say, "none" for no error, "?" for no answer yet.
QStringList errorsOf(const QString& home) {
    QStringList errors;
    for (const Server& server : serversOf(home))
        errors += server.metrics ? server.metrics->errorMessage.value_or(u"none"_s) : u"?"_s;
    return errors;
}

/// A home with a list of this computer and one host, refreshed as often as possible.
bool writeFleet(const QString& home, const OpenSshServer& host) {
    Server here;
    here.id = QUuid::createUuid();
    here.isLocal = true;
    Server there;
    there.id = QUuid::createUuid();
    there.host = host.address();
    there.port = host.port();
    there.user = host.user();
    there.customSshKeyPath = host.keyPath();
    AppSettings settings;
    settings.refreshIntervalSeconds = 10;
    const QString folder = home + u"/.local/share/Tarnwick/"_s;
    return writeFile(folder + u"servers.json"_s, encodeServers({here, there}).value()) &&
           writeFile(folder + u"settings.json"_s, encodeSettings(settings).value());
}

QByteArray manyContainers() {
    QString rows;
    for (int i = 0; i < 300; ++i)
        rows += u"4f1c2a9b7d%1\tservice-%1\tregistry.example/team/service-with-a-long-name-%1:2024.11.3\t"
                "Up 12 days (healthy)\trunning\t0.0.0.0:8%1->8080/tcp, :::8%1->8080/tcp\n"_s.arg(i);
    return rows.toUtf8();
}

struct Host {
    QString name;
    QString error; ///< a pattern
    QStringView command = {};
    OpenSshServer server = {};
};

} // namespace

class HeadlessTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    static void monitorsAFleetOfAllKindsOfHosts() {
        Host hosts[] = {{u"healthy"_s, u"^none$"_s},
                        {u"refuses"_s, u"Connection refused"_s},
                        {u"hangs"_s, u"^No answer within 30 seconds$"_s, HostBehaviour::hangs},
                        {u"greets"_s, u"^Failed to parse metrics: "_s, HostBehaviour::greets},
                        {u"crowded"_s, u"^none$"_s}};
        QVERIFY(hosts[4].server.standIns().addDocker(manyContainers()));
        QByteArray config;
        for (Host& host : hosts) {
            QCOMPARE(host.server.start(host.command), QString());
            config += hostBlock(host.name, host.server);
        }
        hosts[1].server.stop();
        const QTemporaryDir home;
        QVERIFY(writeFile(home.filePath(u".ssh/config"_s), config));

        Program program(home.path());
        QTRY_VERIFY_WITH_TIMEOUT(!program.lines().isEmpty(), 10'000);
        QVERIFY2(QRegularExpression(u"^⚠ (\\d+|--)°C • ALL OFF$"_s).match(program.lines().first()).hasMatch(),
                 qPrintable(program.lines().first()));
        // This computer, the healthy host and the crowded one answer at once; the cycle still waits for the hanging
        // one.
        QTRY_VERIFY2_WITH_TIMEOUT(program.lines().last().endsWith(u"• 3/6 OK"), qPrintable(program.lines().last()),
                                  20'000);
        QVERIFY(!serversOf(home.path()).first().metrics);

        QList<Server> servers;
        QTRY_VERIFY_WITH_TIMEOUT(!(servers = serversOf(home.path())).isEmpty() && servers.first().metrics, 45'000);
        QCOMPARE(servers.size(), 6);
        const Server local = servers.takeFirst();
        QVERIFY(local.isLocal);
        QCOMPARE(local.metrics->errorMessage.value_or(u"none"_s), u"none"_s);
        for (int i = 0; i < 5; ++i) {
            QCOMPARE(servers[i].name, hosts[i].name);
            QVERIFY(servers[i].metrics.has_value());
            const QString error = servers[i].metrics->errorMessage.value_or(u"none"_s);
            QVERIFY2(error.contains(QRegularExpression(hosts[i].error)), qPrintable(error));
        }
        QCOMPARE(servers[4].metrics->containers.size(), 300);

        // The figures that do not change quickly equal those that the script prints when run by hand.
        const QJsonObject line = probedByHand(hosts[0].server.standIns().searchPath());
        QVERIFY(!line.isEmpty());
        const ServerMetrics& metrics = *servers[0].metrics;
        QCOMPARE(metrics.memoryTotalMB, line.value(u"mem_total"_s).toDouble());
        QCOMPARE(metrics.diskTotalGB, line.value(u"disk_total"_s).toDouble());
        QCOMPARE(metrics.cpuPercent, line.value(u"cpu"_s).toDouble());
        QVERIFY(metrics.latencyMs > 0);

        program.terminate();
        expectGoodEnd(program);
        QCOMPARE(program.readAllStandardError(), QByteArray());
    }

    /// Qt ends the process when it has no plugin for the display.
    static void printsLinesWhereNoWindowCanBeOpened() {
        const QTemporaryDir home;
        sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
        home.filePath(u"wayland-0"_s).toLatin1().toStdString().copy(address.sun_path, sizeof address.sun_path - 1);
        const int compositor = ::socket(AF_UNIX, SOCK_STREAM, 0);
        QCOMPARE(::bind(compositor, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        QCOMPARE(::listen(compositor, 1), 0);
        const QString variables = u"WAYLAND_DISPLAY=%1 QT_QPA_PLATFORM=none"_s.arg(QString::fromUtf8(address.sun_path));
        Program program(home.path(), u"/usr/bin/env"_s, variables.split(u' ') << QStringLiteral(TARNWICK_EXECUTABLE));
        QTRY_VERIFY_WITH_TIMEOUT(!program.lines().isEmpty(), 10'000);
        ::close(compositor);
        program.terminate();
        expectGoodEnd(program);
        QCOMPARE(program.readAllStandardError(),
                 "tarnwick: no window can be opened here: Qt's platform plugin \"none\" cannot be used\n");
    }

    /// On a display, for which the tour opens, and where a second launch asks for the popover as a click does.
    static void runsWithoutItsViews() {
        Companion screen;
        const QStringList display{u"QT_QPA_PLATFORM=offscreen"_s, u"DISPLAY="_s + QLatin1String(screen.startScreen())};
        for (const auto& [module, reason] : {std::pair(QByteArray(), "tarnwick-views\\.so is missing"),
                                             {"garbage", ".*tarnwick-views\\.so' .*"},
                                             {readFile(QStringLiteral(TARNWICK_VIEWS)), "qrc:.* is not installed"}}) {
            const QTemporaryDir home;
            const QString executable = home.filePath(u"tarnwick"_s);
            QVERIFY(QFile::copy(QStringLiteral(TARNWICK_EXECUTABLE), executable));
            QVERIFY(module.isEmpty() || writeFile(home.filePath(u"tarnwick-views.so"_s), module));
            const QString plugins = QLibraryInfo::path(QLibraryInfo::PluginsPath);
            QVERIFY(writeFile(home.filePath(u"qt.conf"_s), "[Paths]\nQmlImports=/none\nPlugins=" + plugins.toUtf8()));
            const QStringList command = display + QStringList{u"XDG_RUNTIME_DIR="_s + home.path(), executable};
            Program program(home.path(), u"/usr/bin/env"_s, command);
            QByteArray said;
            QTRY_VERIFY_WITH_TIMEOUT((said += program.readAllStandardError()).endsWith('\n'), 20'000);
            for (int presses = 0; presses < 2; ++presses) {
                Program second(home.path(), u"/usr/bin/env"_s, command);
                expectGoodEnd(second);
            }
            program.terminate();
            expectGoodEnd(program);
            const auto line = u"^tarnwick: no window can be opened: %1\n$"_s.arg(QLatin1String(reason));
            said += program.readAllStandardError();
            QVERIFY2(QRegularExpression(line).match(QString::fromUtf8(said)).hasMatch(), said.constData());
        }
    }

    static void savesWhenItsDisplayIsLost() {
        Companion screen;
        const QTemporaryDir home;
        const QString settings = home.filePath(u".local/share/Tarnwick/settings.json"_s);
        Program program(home.path(), u"/usr/bin/env"_s,
                        {u"DISPLAY="_s + QLatin1String(screen.startScreen()), u"ASAN_OPTIONS=detect_leaks=0"_s,
                         QStringLiteral(TARNWICK_EXECUTABLE)});
        QTRY_VERIFY_WITH_TIMEOUT(!serversOf(home.path()).isEmpty() && serversOf(home.path())[0].metrics, 20'000);
        QVERIFY(QFile::remove(settings));
        screen.kill();
        QVERIFY(program.waitForFinished());
        QCOMPARE(std::pair(program.exitStatus(), program.exitCode()), std::pair(QProcess::NormalExit, 1));
        QVERIFY(QFile::exists(settings));
    }

    static void secondOneFollowsAndTakesOver() {
        const QTemporaryDir home;
        const QString settings = home.filePath(u".local/share/Tarnwick/settings.json"_s);
        Program first(home.path());
        QTRY_VERIFY_WITH_TIMEOUT(!first.lines().isEmpty() && first.lines().last().endsWith(u"1 OK"_s), 10'000);
        Program second(home.path());
        QTRY_VERIFY_WITH_TIMEOUT(!second.lines().isEmpty(), 10'000);
        QVERIFY(second.lines().last().endsWith(u"• 1 OK"_s)); // it has not probed
        QVERIFY(QFile::remove(settings));
        second.terminate();
        expectGoodEnd(second);
        QVERIFY(!QFile::exists(settings)); // nor saved

        Program third(home.path());
        QTRY_VERIFY_WITH_TIMEOUT(!third.lines().isEmpty(), 10'000);
        QCOMPARE(::kill(static_cast<pid_t>(first.processId()), SIGINT), 0);
        expectGoodEnd(first);
        QVERIFY(QFile::remove(settings));
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(settings), 10'000);
        third.terminate();
        expectGoodEnd(third);
        QCOMPARE(third.readAllStandardError() + first.readAllStandardError(), QByteArray());
    }

    static void aHomeThatHangsStopsNothing() {
        OpenSshServer host;
        QCOMPARE(host.start(), QString());
        const QTemporaryDir home;
        QVERIFY(writeFleet(home.path(), host) && writeFile(home.filePath(u"home hangs"_s), {}));
        Program program(home.path(), QStringLiteral(TARNWICK_EXECUTABLE), {}, home.path());
        QTRY_COMPARE_WITH_TIMEOUT(errorsOf(home.path()), (QStringList{u"No answer within 30 seconds"_s, u"none"_s}),
                                  45'000);
        const QString settings = home.filePath(u".local/share/Tarnwick/settings.json"_s);
        QVERIFY(QFile::remove(settings));
        QElapsedTimer clock;
        clock.start();
        program.terminate();
        expectGoodEnd(program);
        QVERIFY2(clock.elapsed() < 2'000, qPrintable(QString::number(clock.elapsed())));
        QVERIFY(QFile::exists(settings));
    }

    static void worksAgainWhenThereAreThreadsAgain() {
        OpenSshServer host;
        QCOMPARE(host.start(), QString());
        const QTemporaryDir home;
        QVERIFY(writeFleet(home.path(), host) && writeFile(home.filePath(u"no threads"_s), {}));
        Program program(home.path(), QStringLiteral(TARNWICK_EXECUTABLE), {}, home.path());
        QTRY_COMPARE_WITH_TIMEOUT(errorsOf(home.path()),
                                  (QStringList{u"Cannot start /bin/sh: Resource temporarily unavailable"_s,
                                               u"Cannot start /usr/bin/ssh: Resource temporarily unavailable"_s}),
                                  10'000);
        QVERIFY(QFile::remove(home.filePath(u"no threads"_s)));
        QTRY_COMPARE_WITH_TIMEOUT(errorsOf(home.path()), (QStringList{u"none"_s, u"none"_s}), 25'000);
        program.terminate();
        expectGoodEnd(program);
    }

    static void endsWhenNobodyReads() {
        for (const auto& [where, lines, errors] :
             {std::tuple(u"| head -n 1"_s, 1, "status 0\n"),
              {u"> /dev/full"_s, 0,
               "tarnwick: cannot write to the standard output: No space left on device\nstatus 1\n"}}) {
            const QTemporaryDir home;
            Program program(
                home.path(), u"/bin/sh"_s,
                {u"-c"_s, u"{ \"$0\"; echo status $? >&2; } "_s + where, QStringLiteral(TARNWICK_EXECUTABLE)});
            expectGoodEnd(program);
            QCOMPARE(program.lines().size(), lines);
            QCOMPARE(program.readAllStandardError(), errors);
        }
    }
};

QTEST_GUILESS_MAIN(HeadlessTest)
#include "tst_headless.moc"
