#pragma once

#include <QProcess>
#include <QStandardPaths>

#include <csignal>

#include <sys/prctl.h>

namespace tarnwick {

/// A program that runs beside the test and ends with it.
class Companion {
public:
    Companion() = default;
    ~Companion() {
        process_.terminate();
        if (!process_.waitForFinished())
            process_.kill();
        process_.waitForFinished();
    }
    Companion(const Companion&) = delete;
    Companion& operator=(const Companion&) = delete;

    void start(const QString& program, const QStringList& arguments) {
        if (QStandardPaths::findExecutable(program).isEmpty())
            qFatal("%s is missing: install dbus-daemon, dunst and xvfb", qPrintable(program));
        process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process_.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); }); // even when the test crashes
        process_.start(program, arguments);
    }
    /// Starts it, and returns the first line that it prints.
    QByteArray announcementOf(const QString& program, const QStringList& arguments) {
        start(program, arguments);
        while (!process_.canReadLine())
            if (!process_.waitForReadyRead(30'000))
                qFatal("%s does not start", qPrintable(program));
        return process_.readLine().trimmed();
    }
    /// An X server; returns its name for DISPLAY.
    QByteArray startScreen() {
        const QString size = QStringLiteral("1280x800x24");
        return ':' + announcementOf(QStringLiteral("Xvfb"),
                                    QStringLiteral("-displayfd 1 -nolisten tcp -screen 0 %1").arg(size).split(u' '));
    }

private:
    QProcess process_;
};

} // namespace tarnwick
