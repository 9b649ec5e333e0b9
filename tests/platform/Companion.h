#pragma once

#include <QProcess>
#include <QStandardPaths>

#include <csignal>

#include <sys/prctl.h>

namespace tarnwick {

/// The path of a program that the test needs.
inline QString needed(const QString& program) {
    QString path = QStandardPaths::findExecutable(program);
    if (path.isEmpty())
        qFatal("%s is missing: install the Debian package %s", qPrintable(program), qPrintable(program.toLower()));
    return path;
}

/// A program that runs beside the test and ends with it.
class Companion : QProcess {
public:
    using QProcess::kill;

    ~Companion() override { stop(); }
    void stop() {
        terminate();
        if (!waitForFinished())
            kill();
        waitForFinished();
    }
    void start(const QString& program, const QStringList& arguments) {
        setProcessChannelMode(ForwardedErrorChannel);
        setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); }); // even when the test crashes
        QProcess::start(needed(program), arguments);
    }
    /// Starts it, and returns the first line that it prints.
    QByteArray announcementOf(const QString& program, const QStringList& arguments) {
        start(program, arguments);
        while (!canReadLine())
            if (!waitForReadyRead(30'000))
                qFatal("%s does not start", qPrintable(program));
        return readLine().trimmed();
    }
    /// A session bus that starts no services by itself; returns its address.
    QByteArray startBus(const QStringList& options = {}) {
        return announcementOf(QStringLiteral("dbus-daemon"),
                              QStringList{QStringLiteral("--config-file=" TARNWICK_FIXTURES "/session-bus.conf"),
                                          QStringLiteral("--nofork"), QStringLiteral("--print-address")} +
                                  options);
    }
    /// An X server; returns its name for DISPLAY.
    QByteArray startScreen() {
        const QString arguments = QStringLiteral("-displayfd 1 -nolisten tcp -screen 0 1280x800x24");
        return ':' + announcementOf(QStringLiteral("Xvfb"), arguments.split(u' '));
    }
};

} // namespace tarnwick
