// The demo without a display: what it shows, and that it leaves nothing behind, however it ends.

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

/// Processes whose command line or environment names that path.
QStringList processesOf(const QString& path) {
    QStringList found;
    const QStringList numbers = QDir(u"/proc"_s).entryList({u"[0-9]*"_s}, QDir::Dirs);
    for (const QString& number : numbers) {
        for (const QString& name : {u"cmdline"_s, u"environ"_s}) {
            QFile file(u"/proc/%1/%2"_s.arg(number, name));
            if (file.open(QIODevice::ReadOnly) && file.readAll().contains(path.toUtf8()))
                found.append(number);
        }
    }
    return found;
}

class Demo : public QProcess {
public:
    Demo() {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(u"DISPLAY"_s);
        environment.remove(u"WAYLAND_DISPLAY"_s);
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
    void leavesNothing_data();
    void leavesNothing();
    void twoAtOnce();
};

void DemoTest::leavesNothing_data() {
    QTest::addColumn<int>("signalNumber");
    QTest::newRow("Ctrl-C") << SIGINT;
    QTest::newRow("terminated") << SIGTERM;
    QTest::newRow("terminal closed") << SIGHUP;
    QTest::newRow("killed") << SIGKILL;
}

void DemoTest::leavesNothing() {
    QFETCH(const int, signalNumber);
    Demo demo;
    // This computer, the healthy server and the one with the full disk, of the four that are not paused.
    QTRY_VERIFY2_WITH_TIMEOUT(demo.printed().endsWith(" 3/4 OK\n"), demo.printed().constData(), 60'000);
    const QString folder = demo.folder();
    QVERIFY(QFile::exists(folder));
    QVERIFY(processesOf(folder).size() >= 5);

    QCOMPARE(::kill(static_cast<pid_t>(demo.processId()), signalNumber), 0);
    QVERIFY(demo.waitForFinished());
    if (signalNumber != SIGKILL) {
        QCOMPARE(demo.exitStatus(), QProcess::NormalExit);
        QCOMPARE(demo.exitCode(), 0);
        QVERIFY2(demo.printed().endsWith(" 3/4 OK\n"), demo.printed().constData());
        QVERIFY(!QFile::exists(folder));
    }
    QTRY_VERIFY_WITH_TIMEOUT(!QFile::exists(folder), 30'000);
    QTRY_COMPARE_WITH_TIMEOUT(processesOf(folder), QStringList(), 30'000);
}

void DemoTest::twoAtOnce() {
    Demo first;
    Demo second;
    QTRY_VERIFY2_WITH_TIMEOUT(first.printed().endsWith(" 3/4 OK\n"), first.printed().constData(), 60'000);
    QTRY_VERIFY2_WITH_TIMEOUT(second.printed().endsWith(" 3/4 OK\n"), second.printed().constData(), 60'000);
    QVERIFY(first.folder() != second.folder());
}

QTEST_GUILESS_MAIN(DemoTest)
#include "tst_demo.moc"
