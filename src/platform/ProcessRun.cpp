#include "ProcessRun.h"

#include "ChildSetup.h"

#include <QProcessEnvironment>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <utility>

#include <sys/types.h>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

QProcessEnvironment childEnvironment() {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"LC_ALL"_s, u"C"_s);
    // Nobody is asked for anything on the desktop. A client in batch mode still shows that a security key has to be
    // touched, and the client that it starts for a jump host is not in batch mode.
    environment.insert(u"SSH_ASKPASS_REQUIRE"_s, u"never"_s);
    for (const QString& name : {u"SSH_ASKPASS"_s, u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s})
        environment.remove(name);
    return environment;
}

bool hasNul(const ProcessRequest& request) {
    return request.executable.contains(QChar::Null) ||
           std::any_of(
               request.arguments.begin(), request.arguments.end(),
               [](const QString& argument) { return argument.contains(QChar::Null); });
}

/// Appends as much of `arrived` as fits into `limit` bytes of `kept`; false when some of it did not fit.
bool appendWithin(QByteArray& kept, const QByteArray& arrived, qint64 limit) {
    const qint64 room = std::max<qint64>(0, limit - kept.size());
    kept.append(arrived.constData(), static_cast<qsizetype>(std::min<qint64>(room, arrived.size())));
    return arrived.size() <= room;
}

} // namespace

ProcessRun::ProcessRun(ProcessRequest request, QPromise<ProcessOutcome> promise, QObject* parent)
    : QObject(parent), request_(std::move(request)), promise_(std::move(promise)) {
    process_.setProgram(request_.executable);
    process_.setArguments(request_.arguments);
    process_.setProcessEnvironment(childEnvironment());
    process_.setStandardInputFile(QProcess::nullDevice());
    if (request_.standardOutputLimit == 0)
        process_.setStandardOutputFile(QProcess::nullDevice());
    if (request_.standardErrorKept == 0)
        process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.setChildProcessModifier(&ChildSetup::enter);
    connect(&process_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            failToStart(process_.errorString());
    });
    connect(&process_, &QProcess::readyReadStandardOutput, this, &ProcessRun::readStandardOutput);
    connect(&process_, &QProcess::readyReadStandardError, this, &ProcessRun::readStandardError);
    connect(&process_, &QProcess::finished, this, &ProcessRun::processFinished);

    timeLimit_.setSingleShot(true);
    timeLimit_.setTimerType(Qt::PreciseTimer);
    connect(&timeLimit_, &QTimer::timeout, this, [this] {
        killGroup();
        settle(ProcessOutcome::End::timedOut);
    });
}

ProcessRun::~ProcessRun() {
    process_.disconnect(this);
    killGroup();
    process_.waitForFinished();
}

void ProcessRun::start() {
    sinceStart_.start();
    // The system cuts an argument at its first NUL, so something else would run than what was asked for.
    if (hasNul(request_))
        return failToStart(qt_error_string(EINVAL));
    process_.start(QIODevice::ReadOnly);
    if (!isSettled_)
        timeLimit_.start(request_.timeLimit);
}

void ProcessRun::killGroup() {
    const auto child = static_cast<pid_t>(process_.processId());
    if (child <= 0)
        return;
    // Right after the fork the child may not have made its own group yet.
    if (::kill(-child, SIGKILL) != 0)
        ::kill(child, SIGKILL);
}

void ProcessRun::readStandardOutput() {
    const QByteArray arrived = process_.readAllStandardOutput();
    if (isSettled_ || appendWithin(outcome_.standardOutput, arrived, request_.standardOutputLimit))
        return;
    killGroup();
    settle(ProcessOutcome::End::outputTooLarge);
}

void ProcessRun::readStandardError() {
    appendWithin(outcome_.standardError, process_.readAllStandardError(), request_.standardErrorKept);
}

void ProcessRun::processFinished(int status, QProcess::ExitStatus exitStatus) {
    readStandardOutput();
    readStandardError();
    outcome_.status = status;
    settle(exitStatus == QProcess::NormalExit ? ProcessOutcome::End::exited : ProcessOutcome::End::signalled);
    deleteLater();
}

void ProcessRun::failToStart(const QString& reason) {
    // Qt puts the name of the failed call before the system's own text.
    outcome_.launchError = reason.section(u": "_s, -1).simplified();
    settle(ProcessOutcome::End::failedToStart);
    deleteLater();
}

void ProcessRun::settle(ProcessOutcome::End end) {
    if (isSettled_)
        return;
    isSettled_ = true;
    timeLimit_.stop();
    outcome_.end = end;
    outcome_.elapsed = std::chrono::nanoseconds(sinceStart_.nsecsElapsed());
    promise_.addResult(std::move(outcome_));
    promise_.finish();
    outcome_ = {};
    Q_EMIT settled();
}

} // namespace tarnwick
