#include "Files.h"
#include "ProbeScripts.h"
#include "StandIns.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

QByteArray fixture(const QString& name) {
    return readFile(QStringLiteral(TARNWICK_FIXTURES "/") + name);
}

QByteArray sha256(const QString& text) {
    return QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha256).toHex();
}

struct ShellResult {
    int status = -1;
    QByteArray output;
    QByteArray error;
    QJsonObject line; ///< the output as JSON
};

ShellResult runScript(const QStringList& shell, const QString& script, const StandIns& standIns) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"PATH"_s, standIns.searchPath());
    environment.insert(u"LC_ALL"_s, u"C"_s);
    process.setProcessEnvironment(environment);
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(shell.first(), shell.sliced(1) + QStringList{u"-c"_s, script}, QIODevice::ReadOnly);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit)
        return {.output = {}, .error = process.errorString().toLocal8Bit(), .line = {}};
    ShellResult result{process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError(), {}};
    result.line = QJsonDocument::fromJson(result.output).object();
    return result;
}

} // namespace

class ProbeScriptsTest : public QObject {
    Q_OBJECT

private:
    static void addShells() {
        QTest::addColumn<QStringList>("shell");
        QTest::newRow("sh") << QStringList{u"/bin/sh"_s};
        QTest::newRow("dash") << QStringList{u"/usr/bin/dash"_s};
        QTest::newRow("bash") << QStringList{u"/bin/bash"_s};
        QTest::newRow("busybox") << QStringList{u"/usr/bin/busybox"_s, u"sh"_s};
    }

private Q_SLOTS:
    void areTheTriedTexts() {
        QCOMPARE(sha256(ProbeScripts::remote()), "3bd71fe9d20d60cc12ebb2f28f570d41c0ad6f008cecb1312ede07566f07dfe9");
        const QString local = ProbeScripts::local(12.5, 0, {16, 97'656.25}, {1e-05, 120.3});
        const qsizetype head = local.indexOf(u"12.5");
        QCOMPARE(sha256(local.first(head)), "b6ebd08e997ad06d3267103df5b13523cd7c98f7ba0eb79c2e4bcd245347cb21");
        QCOMPARE(local.sliced(head), u"12.5 0.0 16384.0 100000000.0 1e-05 120.3 \"$cpu_load\" \"$docker_json\"");
    }

    void remoteRunsInEveryShell_data() { addShells(); }
    void remoteRunsInEveryShell() {
        QFETCH(const QStringList, shell);
        StandIns host;
        QVERIFY(host.addRecording(u"top"_s, fixture(u"top/procps-4.0-busy.txt"_s)));
        QVERIFY(host.addRecording(u"df"_s, fixture(u"df-P-k.txt"_s)));
        QVERIFY(
            host.addRecording(u"uptime"_s, " 20:50:34 up 12 days,  3:04,  2 users,  load average: 0.81, 0.50, 0.23\n"));
        QVERIFY(host.addDocker(fixture(u"docker/containers.tsv"_s)));

        const ShellResult result = runScript(shell, ProbeScripts::remote(), host);
        QCOMPARE(result.error, QByteArray());
        QCOMPARE(result.output.count('\n'), 1);
        QCOMPARE(result.line[u"cpu"].toDouble(-1), 58.0); // 42.7 % idle
        QCOMPARE(result.line[u"mem_total"].toInt(-1),
                 readFile(u"/proc/meminfo"_s).simplified().split(' ').value(1).toInt() / 1024);
        QVERIFY(result.line[u"mem_used"].toInt(-1) > 0);
        QCOMPARE(result.line[u"disk_total"].toDouble(), 252.0);
        QCOMPARE(result.line[u"disk_used"].toDouble(), 16.2);
        QVERIFY(result.line[u"load"].isDouble());
        QCOMPARE(result.line[u"uptime"].toString(), u"days"_s);
        const QJsonArray containers = result.line[u"containers"].toArray();
        QCOMPARE(containers.size(), 6);
        QCOMPARE(containers[1].toObject(), (QJsonObject{{u"id"_s, u"9b1e77a0c2d5"_s},
                                                        {u"name"_s, u"/db"_s},
                                                        {u"image"_s, u"postgres:16"_s},
                                                        {u"status"_s, u"Up 2 weeks"_s},
                                                        {u"state"_s, u"running"_s},
                                                        {u"ports"_s, u"5432/tcp"_s}}));
        QCOMPARE(containers[5][u"name"].toString(), u"müßig-☕"_s);
    }

    void localRunsInEveryShell_data() { addShells(); }
    void localRunsInEveryShell() {
        QFETCH(const QStringList, shell);
        StandIns host;
        QVERIFY(host.addRecording(u"sysctl"_s, "{ 1.84 2.01 2.20 }\n"));
        QVERIFY(host.addDocker(fixture(u"docker/containers.tsv"_s)));
        const ShellResult result = runScript(shell, ProbeScripts::local(12.5, 3, {8, 16}, {120.3, 460.4}), host);
        QCOMPARE(result.error, QByteArray());
        QVERIFY2(
            result.output.startsWith(R"({"cpu":12.5,"gpu":3.0,"mem_used":8192,"mem_total":16384,"disk_used":120.3,)"
                                     R"("disk_total":460.4,"load":1.84,"uptime":"local","containers":[{"id":)"),
            result.output);
        QCOMPARE(result.line[u"containers"].toArray().size(), 6);
    }

    void topAndDockerThatTellNothing_data() {
        QTest::addColumn<QString>("shell");
        QTest::addColumn<QString>("top");
        QTest::addColumn<QByteArray>("complaint"); // a part of the standard error; empty when there is none
        QTest::addColumn<bool>("prints");
        // An idle host prints "100.0 id," without a space before the number, so the script reads "id," for the number.
        QTest::newRow("idle, bash") << u"/bin/bash"_s << u"top/procps-4.0-idle.txt"_s << QByteArray("operand") << true;
        QTest::newRow("idle, dash") << u"/bin/dash"_s << u"top/procps-4.0-idle.txt"_s << QByteArray("Illegal number")
                                    << false;
        QTest::newRow("busybox top") << u"/bin/sh"_s << u"top/busybox-1.35.txt"_s << QByteArray() << true;
        QTest::newRow("silent top") << u"/bin/sh"_s << u"none"_s << QByteArray() << true;
    }
    void topAndDockerThatTellNothing() {
        QFETCH(const QString, shell);
        QFETCH(const QString, top);
        QFETCH(const QByteArray, complaint);
        QFETCH(const bool, prints);
        StandIns host;
        QVERIFY(host.addRecording(u"top"_s, fixture(top)));
        QVERIFY(host.add(u"docker"_s, "#!/bin/sh\necho 'Cannot connect to the Docker daemon' >&2; exit 1\n"));
        const ShellResult result = runScript({shell}, ProbeScripts::remote(), host);
        QCOMPARE(result.status == 0, prints);
        QCOMPARE(result.error.isEmpty(), complaint.isEmpty());
        QVERIFY2(result.error.contains(complaint), result.error);
        QCOMPARE(result.line[u"cpu"].toDouble(-1), prints ? 0.0 : -1.0);
        QCOMPARE(result.line[u"containers"].isArray(), prints);
        QVERIFY(result.line[u"containers"].toArray().isEmpty());
    }
};

} // namespace tarnwick

QTEST_GUILESS_MAIN(tarnwick::ProbeScriptsTest)
#include "tst_probescripts.moc"
