#include "ProbeScripts.h"
#include "Rows.h"
#include "StandIns.h"

#include <QCryptographicHash>
#include <QJsonObject>
#include <QProcess>

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

ShellResult runScript(const QString& shell, const QString& script, const StandIns& standIns) {
    QProcess process;
    QProcessEnvironment environment = standIns.environment();
    environment.insert(u"LC_ALL"_s, u"C"_s);
    process.setProcessEnvironment(environment);
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(shell.section(u' ', 0, 0), shell.split(u' ').sliced(1) + QStringList{u"-c"_s, script});
    process.waitForFinished();
    const QByteArray output = process.readAllStandardOutput();
    return {process.exitCode(), output, process.readAllStandardError(), QJsonDocument::fromJson(output).object()};
}

} // namespace

class ProbeScriptsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void areTheTriedTexts() {
        QCOMPARE(sha256(ProbeScripts::remote()), "3bd71fe9d20d60cc12ebb2f28f570d41c0ad6f008cecb1312ede07566f07dfe9");
        const QString local = ProbeScripts::local(12.5, 0, {16, 97'656.25}, {1e-05, 120.3});
        const qsizetype head = local.indexOf(u"12.5");
        QCOMPARE(sha256(local.first(head)), "b6ebd08e997ad06d3267103df5b13523cd7c98f7ba0eb79c2e4bcd245347cb21");
        QCOMPARE(local.sliced(head), u"12.5 0.0 16384.0 100000000.0 1e-05 120.3 \"$cpu_load\" \"$docker_json\"");
    }

    void bothRunInEveryShell_data() {
        QTest::addColumn<QString>("shell");
        for (const char* shell : {"/bin/sh", "/usr/bin/dash", "/bin/bash", "/usr/bin/busybox sh"})
            QTest::newRow(shell) << QString::fromLatin1(shell);
    }
    void bothRunInEveryShell() {
        QFETCH(const QString, shell);
        StandIns host;
        QVERIFY(host.addRecording(u"top"_s, fixture(u"top/procps-4.0-busy.txt"_s)));
        QVERIFY(host.addRecording(u"df"_s, fixture(u"df-P-k.txt"_s)));
        QVERIFY(host.addRecording(u"uptime"_s, fixture(u"uptime.txt"_s)));
        QVERIFY(host.addRecording(u"sysctl"_s, "{ 1.84 2.01 2.20 }\n"));
        QVERIFY(host.addDocker(fixture(u"docker/containers.tsv"_s)));
        const QJsonObject expected = QJsonDocument::fromJson(fixture(u"probelines/remote.json"_s)).object();

        ShellResult remote = runScript(shell, ProbeScripts::remote(), host);
        QCOMPARE(remote.error, QByteArray());
        QCOMPARE(remote.output.count('\n'), 1);
        QCOMPARE(remote.line.take(u"mem_total").toInt(-1),
                 readFile(u"/proc/meminfo"_s).simplified().split(' ').value(1).toInt() / 1024);
        QVERIFY(remote.line.take(u"mem_used").toInt(-1) > 0);
        QVERIFY(remote.line.take(u"load").isDouble());
        QCOMPARE(remote.line, expected);

        const ShellResult local = runScript(shell, ProbeScripts::local(12.5, 3, {8, 16}, {120.3, 460.4}), host);
        QCOMPARE(local.error, QByteArray());
        QVERIFY2(local.output.startsWith(R"({"cpu":12.5,"gpu":3.0,"mem_used":8192,"mem_total":16384,"disk_used":120.3,)"
                                         R"("disk_total":460.4,"load":1.84,"uptime":"local","containers":[{"id":)"),
                 local.output);
        QCOMPARE(local.line[u"containers"], expected[u"containers"]);
    }

    void topAndDockerThatTellNothing() {
        // An idle host prints "100.0 id," without a space before the number, so the script reads "id," for the number.
        const QString idle = u"top/procps-4.0-idle.txt"_s;
        for (const auto& [shell, top, complaint, prints] : {std::tuple(u"/bin/bash"_s, idle, "operand", true),
                                                            {u"/bin/dash"_s, idle, "Illegal number", false},
                                                            {u"/bin/sh"_s, u"top/busybox-1.35.txt"_s, "", true},
                                                            {u"/bin/sh"_s, u"none"_s, "", true}}) {
            StandIns host;
            QVERIFY(host.addRecording(u"top"_s, fixture(top)));
            QVERIFY(host.add(u"docker"_s, "#!/bin/sh\necho 'Cannot connect to the Docker daemon' >&2; exit 1\n"));
            const ShellResult result = runScript(shell, ProbeScripts::remote(), host);
            QCOMPARE(result.status == 0, prints);
            QVERIFY2(result.error.contains(complaint) && result.error.isEmpty() == !*complaint, result.error);
            QCOMPARE(result.line[u"cpu"].toDouble(-1), prints ? 0.0 : -1.0);
            QCOMPARE(result.line[u"containers"], prints ? QJsonValue(QJsonArray()) : QJsonValue::Undefined);
        }
    }
};

} // namespace tarnwick

QTEST_GUILESS_MAIN(tarnwick::ProbeScriptsTest)
#include "tst_probescripts.moc"
