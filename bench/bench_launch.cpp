// A first launch on the desktop of $DISPLAY: from the start of the process to the first picture of the tour.
//
//   bench_launch PROGRAM

#include "Figures.h"

#include <QDir>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QPixmap>
#include <QProcess>
#include <QScreen>
#include <QTemporaryDir>
#include <QThread>

#include <algorithm>
#include <vector>

namespace {

/// The place of the tour's window.
bool isBlack() {
    QScreen* const screen = QGuiApplication::primaryScreen();
    const QPoint middle = screen->geometry().center();
    return screen->grabWindow(0, middle.x(), middle.y(), 1, 1).toImage().pixelColor(0, 0) == QColor(Qt::black);
}

void waitUntilBlack(bool black) {
    QElapsedTimer time;
    time.start();
    while (isBlack() != black) {
        if (time.hasExpired(20'000))
            qFatal("the tour does not come or go");
        QThread::usleep(500);
    }
}

/// One launch in an empty home, in ms.
double launch(const QString& path) {
    const QTemporaryDir home;
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), home.path());
    program.setProcessEnvironment(environment);
    program.setStandardErrorFile(QProcess::nullDevice());
    const double start = figures::wallMilliseconds();
    program.start(path, QStringList());
    waitUntilBlack(false);
    const double time = figures::wallMilliseconds() - start;
    program.terminate();
    if (!program.waitForFinished() || program.exitCode() != 0)
        qFatal("the program does not end");
    waitUntilBlack(true);
    return time;
}

} // namespace

int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "xcb");
    const QGuiApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "bench_launch PROGRAM\n");
        return 2;
    }
    const QString path = QCoreApplication::arguments().at(1);
    const double first = launch(path);
    std::vector<double> times(11);
    std::ranges::generate(times, [&path] { return launch(path); });
    std::ranges::sort(times);
    figures::report(
        "first launch: process start to the tour's picture, median", times[5], "ms", 250,
        QStringLiteral("(worst %1, the very first %2 ms)").arg(times.back(), 0, 'f', 1).arg(first, 0, 'f', 1));
    return figures::exitStatus();
}
