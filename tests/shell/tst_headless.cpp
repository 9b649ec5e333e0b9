// The program itself, without a display, from a fresh home: real probes of real hosts.

#include "Coding.h"
#include "Files.h"
#include "OpenSshServer.h"
#include "ProbeScripts.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

/// The program under test with a home of its own and no desktop.
class Program {
public:
    explicit Program(const QString& home) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const QString& name : {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s, u"DBUS_SESSION_BUS_ADDRESS"_s,
                                    u"XDG_DATA_HOME"_s, u"XDG_RUNTIME_DIR"_s, u"QT_QPA_PLATFORM"_s})
            environment.remove(name);
        environment.insert(u"HOME"_s, home);
        process.setProcessEnvironment(environment);
        process.setProgram(QStringLiteral(TARNWICK_EXECUTABLE));
    }
    ~Program() {
        process.kill();
        process.waitForFinished(5'000);
    }
    void start() {
        process.start();
        QVERIFY(process.waitForStarted());
    }
    /// Every line printed so far.
    QStringList lines() {
        printed_ += process.readAllStandardOutput();
        return QString::fromUtf8(printed_).split(u'\n', Qt::SkipEmptyParts);
    }
    QProcess process;

private:
    QByteArray printed_;
};

QString fileIn(const QString& home, const QString& name) {
    return home + u"/.local/share/Tarnwick/"_s + name;
}

QList<Server> storedServers(const QString& home) {
    const auto decoded = decodeServers(readFile(fileIn(home, u"servers.json"_s)));
    const auto* servers = std::get_if<QList<Server>>(&decoded);
    return servers ? *servers : QList<Server>();
}

QByteArray hostBlock(const QString& alias, const OpenSshServer& server) {
    return u"Host %1\n  HostName %2\n  Port %3\n  User %4\n  IdentityFile %5\n"_s
        .arg(alias, server.address(), QString::number(server.port()), server.user(), server.keyPath())
        .toUtf8();
}

QJsonObject probedByHand(const QString& searchPath) {
    QProcess shell;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"PATH"_s, searchPath);
    shell.setProcessEnvironment(environment);
    shell.start(u"/bin/sh"_s, {u"-c"_s, ProbeScripts::remote()});
    shell.waitForFinished();
    return QJsonDocument::fromJson(shell.readAllStandardOutput()).object();
}

QByteArray manyContainers() {
    QByteArray rows;
    for (int i = 0; i < 300; ++i) {
        const QByteArray n = QByteArray::number(i);
        rows += "4f1c2a9b7d" + n + "\tservice-" + n + "\tregistry.example/team/service-with-a-long-name-" + n +
                ":2024.11.3\tUp 12 days (healthy)\trunning\t0.0.0.0:8" + n + "->8080/tcp, :::8" + n + "->8080/tcp\n";
    }
    return rows;
}

} // namespace

class HeadlessTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void monitorsAFleetOfAllKindsOfHosts();
    void aSecondLaunchLeavesTheFirstAlone();
    void savesAndEndsOnASignal_data();
    void savesAndEndsOnASignal();
    void endsWhenNobodyReads();
};

void HeadlessTest::monitorsAFleetOfAllKindsOfHosts() {
    OpenSshServer healthy;
    OpenSshServer hanging;
    OpenSshServer greeting;
    OpenSshServer crowded;
    QCOMPARE(healthy.start(), QString());
    QCOMPARE(hanging.start(HostBehaviour::hangs), QString());
    QCOMPARE(greeting.start(HostBehaviour::greets), QString());
    QVERIFY(crowded.standIns().addDocker(manyContainers()));
    QCOMPARE(crowded.start(), QString());
    OpenSshServer stopped;
    QCOMPARE(stopped.start(), QString());
    stopped.stop();

    const QTemporaryDir home;
    QVERIFY(QDir(home.path()).mkdir(u".ssh"_s));
    QFile config(home.filePath(u".ssh/config"_s));
    QVERIFY(config.open(QIODevice::WriteOnly));
    config.write(hostBlock(u"healthy"_s, healthy));
    config.write(hostBlock(u"refuses"_s, stopped));
    config.write(hostBlock(u"hangs"_s, hanging));
    config.write(hostBlock(u"greets"_s, greeting));
    config.write(hostBlock(u"crowded"_s, crowded));
    config.close();

    Program program(home.path());
    program.start();
    QTRY_VERIFY_WITH_TIMEOUT(!program.lines().isEmpty(), 10'000);
    QVERIFY2(QRegularExpression(u"^⚠ (\\d+|--)°C • ALL OFF$"_s).match(program.lines().first()).hasMatch(),
             qPrintable(program.lines().first()));
    // This computer, the healthy host and the crowded one answer at once; the cycle still waits for the hanging one.
    QTRY_VERIFY2_WITH_TIMEOUT(program.lines().last().endsWith(u"• 3/6 OK"), qPrintable(program.lines().last()), 20'000);
    QVERIFY(!storedServers(home.path()).first().metrics);

    QTRY_VERIFY_WITH_TIMEOUT(!storedServers(home.path()).isEmpty() && storedServers(home.path()).first().metrics,
                             45'000);
    const QList<Server> servers = storedServers(home.path());
    QCOMPARE(servers.size(), 6);
    QVERIFY(servers.at(0).isLocal);
    QVERIFY2(!servers.at(0).metrics->errorMessage, qPrintable(servers.at(0).metrics->errorMessage.value_or(u""_s)));
    const QStringList names{u"healthy"_s, u"refuses"_s, u"hangs"_s, u"greets"_s, u"crowded"_s};
    for (qsizetype i = 0; i < names.size(); ++i) {
        QCOMPARE(servers.at(i + 1).name, names.at(i));
        QVERIFY(servers.at(i + 1).metrics.has_value());
    }
    QVERIFY(servers.at(2).metrics->errorMessage->contains(u"Connection refused"));
    QCOMPARE(*servers.at(3).metrics->errorMessage, u"No answer within 30 seconds"_s);
    QVERIFY(servers.at(4).metrics->errorMessage->startsWith(u"Failed to parse metrics: "));
    QVERIFY(!servers.at(5).metrics->errorMessage);
    QCOMPARE(servers.at(5).metrics->containers.size(), 300);

    // The figures that do not change quickly equal those that the script prints when run by hand.
    const QJsonObject line = probedByHand(healthy.standIns().searchPath());
    QVERIFY(!line.isEmpty());
    const ServerMetrics& metrics = *servers.at(1).metrics;
    QVERIFY(!metrics.errorMessage);
    QCOMPARE(metrics.memoryTotalMB, line.value(u"mem_total"_s).toDouble());
    QCOMPARE(metrics.diskTotalGB, line.value(u"disk_total"_s).toDouble());
    QCOMPARE(metrics.cpuPercent, line.value(u"cpu"_s).toDouble());
    QVERIFY(metrics.latencyMs > 0);

    program.process.terminate();
    QVERIFY(program.process.waitForFinished(10'000));
    QCOMPARE(program.process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.process.exitCode(), 0);
    QCOMPARE(program.process.readAllStandardError(), QByteArray());
}

void HeadlessTest::aSecondLaunchLeavesTheFirstAlone() {
    const QTemporaryDir home;
    Program first(home.path());
    first.start();
    QTRY_VERIFY_WITH_TIMEOUT(!first.lines().isEmpty(), 10'000);
    Program second(home.path());
    second.start();
    QVERIFY(second.process.waitForFinished(10'000));
    QCOMPARE(second.process.exitCode(), 0);
    QCOMPARE(second.lines(), QStringList());
    QCOMPARE(first.process.state(), QProcess::Running);
}

void HeadlessTest::savesAndEndsOnASignal_data() {
    QTest::addColumn<int>("signalNumber");
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGTERM") << SIGTERM;
}

void HeadlessTest::savesAndEndsOnASignal() {
    QFETCH(const int, signalNumber);
    const QTemporaryDir home;
    Program program(home.path());
    program.start();
    QTRY_VERIFY_WITH_TIMEOUT(!program.lines().isEmpty(), 10'000);
    QVERIFY(QFile::remove(fileIn(home.path(), u"settings.json"_s)));
    QCOMPARE(::kill(static_cast<pid_t>(program.process.processId()), signalNumber), 0);
    QVERIFY(program.process.waitForFinished(20'000));
    QCOMPARE(program.process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.process.exitCode(), 0);
    QVERIFY(QFile::exists(fileIn(home.path(), u"settings.json"_s)));
}

void HeadlessTest::endsWhenNobodyReads() {
    const QTemporaryDir home;
    Program program(home.path());
    program.process.setArguments(
        {u"-c"_s, u"{ \"$0\"; echo status $? >&2; } | head -n 1"_s, program.process.program()});
    program.process.setProgram(u"/bin/sh"_s);
    program.start();
    QVERIFY(program.process.waitForFinished(20'000));
    QCOMPARE(program.lines().size(), 1);
    QCOMPARE(program.process.readAllStandardError(), QByteArray("status 0\n"));
}

QTEST_GUILESS_MAIN(HeadlessTest)
#include "tst_headless.moc"
