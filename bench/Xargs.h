#pragma once

#include "Figures.h"
#include "ProcessRunner.h"

#include <QProcess>

/// Wall time in ms of the same command line run `times` times under xargs, `atOnce` at a time, and how many of them
/// answered; the time is negative when xargs did not end within 10 minutes.
struct UnderXargs {
    double elapsed = -1;
    qsizetype answers = 0;

    UnderXargs(const tarnwick::ProcessRequest& request, int times, int atOnce) {
        QProcess xargs;
        QByteArray input; // NUL between the arguments
        for (int i = 0; i < times; ++i)
            for (const QString& argument : request.arguments)
                input += argument.toUtf8() + '\0';
        // xargs gives up at a status of 255, which is ssh's where a host does not answer.
        const QString goOn = QStringLiteral("\"$0\" \"$@\" || true");
        const double start = figures::wallMilliseconds();
        xargs.start(QStringLiteral("xargs"), {QStringLiteral("-0"), QStringLiteral("-P"), QString::number(atOnce),
                                              QStringLiteral("-n"), QString::number(request.arguments.size()),
                                              QStringLiteral("sh"), QStringLiteral("-c"), goOn, request.executable});
        xargs.write(input);
        xargs.closeWriteChannel();
        if (!xargs.waitForFinished(600'000))
            return;
        elapsed = figures::wallMilliseconds() - start;
        answers = xargs.readAllStandardOutput().count("\"cpu\":");
    }
};
