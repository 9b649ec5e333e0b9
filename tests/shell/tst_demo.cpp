// The demo without a display: what it shows, and that it leaves nothing behind, however it ends.

#include "Files.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

/// Processes whose command line or environment names that path.
QStringList processesOf(const QString& path) {
    QStringList found;
    const QStringList numbers = QDir(u"/proc"_s).entryList({u"[0-9]*"_s}, QDir::Dirs);
    for (const QString& number : numbers)
        for (const QString& name : {u"cmdline"_s, u"environ"_s})
            if (readFile(u"/proc/%1/%2"_s.arg(number, name)).contains(path.toUtf8()))
                found.append(number);
    return found;
}

class Demo : public QProcess {
public:
    Demo() {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const QString& name : {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s})
            environment.remove(name);
        // The demo preloads a library before the sanitizer's.
        environment.insert(u"ASAN_OPTIONS"_s, environment.value(u"ASAN_OPTIONS"_s) + u":verify_asan_link_order=0"_s);
        setProcessEnvironment(environment);
        setProcessChannelMode(MergedChannels);
        setChildProcessModifier([] {
            for (const int number : {SIGINT, SIGTERM, SIGHUP}) // they may have been ignored when the test started
                ::signal(number, SIG_DFL);
        });
        start(QStringLiteral(TARNWICK_DEMO), {QStringLiteral(TARNWICK_EXECUTABLE)});
    }
    ~Demo() override {
        terminate();
        waitForFinished();
    }
    QByteArray printed() { return printed_ += readAll(); }
    QString folder() {
        return QRegularExpression(u" (/\\S*/tarnwick-demo\\.\\w+):"_s).match(QString::fromUtf8(printed())).captured(1);
    }

private:
    QByteArray printed_;
};

} // namespace

class DemoTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// Two at once, each ended in its own way.
    static void leavesNothing_data() {
        QTest::addColumn<QList<int>>("signalNumbers");
        QTest::newRow("Ctrl-C, terminated") << QList{SIGINT, SIGTERM};
        QTest::newRow("terminal closed, killed") << QList{SIGHUP, SIGKILL};
    }
    static void leavesNothing() {
        QFETCH(const QList<int>, signalNumbers);
        Demo demos[2];
        // This computer, the healthy server and the one with the full disk, of the four that are not paused.
        for (Demo& demo : demos)
            QTRY_VERIFY2_WITH_TIMEOUT(demo.printed().endsWith(" 3/4 OK\n"), demo.printed().constData(), 60'000);
        QVERIFY(demos[0].folder() != demos[1].folder());
        for (int i = 0; i < 2; ++i) {
            const QString folder = demos[i].folder();
            QVERIFY(QFile::exists(folder));
            QVERIFY(processesOf(folder).size() >= 5);

            QCOMPARE(::kill(static_cast<pid_t>(demos[i].processId()), signalNumbers[i]), 0);
            QVERIFY(demos[i].waitForFinished());
            if (signalNumbers[i] != SIGKILL) {
                QCOMPARE(demos[i].exitStatus(), QProcess::NormalExit);
                QCOMPARE(demos[i].exitCode(), 0);
                QVERIFY2(demos[i].printed().endsWith(" 3/4 OK\n"), demos[i].printed().constData());
                QVERIFY(!QFile::exists(folder));
            }
            QTRY_VERIFY_WITH_TIMEOUT(!QFile::exists(folder), 30'000);
            QTRY_COMPARE_WITH_TIMEOUT(processesOf(folder), QStringList(), 30'000);
        }
    }
};

QTEST_GUILESS_MAIN(DemoTest)
#include "tst_demo.moc"
