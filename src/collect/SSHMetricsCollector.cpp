#include "SSHMetricsCollector.h"

#include "BackgroundThreads.h"
#include "ProbePayload.h"
#include "ProbeScripts.h"
#include "SharedConnection.h"
#include "ShellWord.h"
#include "ThisComputer.h"
#include "TildeExpansion.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFutureWatcher>
#include <QPromise>
#include <QStringDecoder>
#include <QTimer>

#include <cerrno>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace tarnwick {

namespace {

constexpr QLatin1StringView sshClient = "/usr/bin/ssh"_L1;
constexpr QLatin1StringView localShell = "/bin/sh"_L1;
constexpr QLatin1StringView secondClient = "/.orbstack/bin/docker"_L1;
constexpr std::chrono::seconds probeTimeLimit = 30s;
constexpr std::chrono::seconds actionTimeLimit = 120s;
constexpr qint64 probeLineLimit = 8LL * 1024 * 1024;
constexpr qint64 standardErrorKept = 64LL * 1024;

/// Port, key and target: the end of every ssh command line before the remote command.
QStringList connectionArguments(const Server& server) {
    QStringList arguments{u"-p"_s, QString::number(server.port)};
    if (server.customSshKeyPath && !server.customSshKeyPath->isEmpty())
        arguments << u"-i"_s << expandingTilde(*server.customSshKeyPath);
    const QString target = server.user + u'@' + server.host;
    if (target.startsWith(u'-')) // ssh would read it as an option
        arguments << u"--"_s;
    return arguments << target;
}

QString noAnswer(std::chrono::seconds timeLimit = probeTimeLimit) {
    return u"No answer within %1 seconds"_s.arg(timeLimit.count());
}

/// Why the process did not run to its end; absent when it did.
std::optional<QString> runFailure(const ProcessOutcome& outcome, QLatin1StringView executable,
                                  std::chrono::seconds timeLimit = probeTimeLimit) {
    switch (outcome.end) {
    case ProcessOutcome::End::failedToStart:
        return u"Cannot start %1: %2"_s.arg(executable, outcome.launchError);
    case ProcessOutcome::End::timedOut:
        return noAnswer(timeLimit);
    case ProcessOutcome::End::outputTooLarge:
        return u"Response too large"_s;
    case ProcessOutcome::End::exited:
    case ProcessOutcome::End::signalled:
        break;
    }
    return std::nullopt;
}

/// Absent when the bytes are not UTF-8. A byte order mark stays.
std::optional<QString> decodedUtf8(const QByteArray& bytes) {
    if (!bytes.isValidUtf8())
        return std::nullopt;
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    return QString(decoder(bytes));
}

/// The text without its last character, which the limit may have cut through.
QByteArray withoutCutCharacter(QByteArray text) {
    while (!text.isEmpty() && (text.back() & 0xC0) == 0x80)
        text.chop(1);
    text.chop(1);
    return text;
}

/// What the client complained about; absent when that is not UTF-8.
std::optional<QString> complaint(const ProcessOutcome& outcome) {
    const bool isCut = outcome.standardError.size() >= standardErrorKept;
    return decodedUtf8(isCut ? withoutCutCharacter(outcome.standardError) : outcome.standardError);
}

QString reasonOfFailedClient(const ProcessOutcome& outcome) {
    const std::optional<QString> text = complaint(outcome);
    if (!text)
        return u"SSH exited with code %1"_s.arg(outcome.status);
    const QString reason = text->trimmed();
    return reason.isEmpty() ? u"Connection refused / timeout"_s : reason;
}

/// The line that says why: docker's first error, or else the last one, as warnings and greetings come before it. That
/// the second client, which is tried on this computer, is not there is no reason.
QString tellingLine(const QString& complaint) {
    QString last;
    for (const QString& line : complaint.split(u'\n')) {
        QString text = line.trimmed();
        if (text.isEmpty() || text.contains(secondClient))
            continue;
        if (text.startsWith(u"Error"_s))
            return text;
        last = text;
    }
    return last;
}

/// The word on docker's command line.
QString verb(ContainerAction action) {
    switch (action) {
    case ContainerAction::start:
        return u"start"_s;
    case ContainerAction::stop:
        return u"stop"_s;
    case ContainerAction::restart:
        return u"restart"_s;
    }
    Q_UNREACHABLE();
}

qint64 wholeMilliseconds(std::chrono::nanoseconds duration) {
    return std::chrono::duration_cast<std::chrono::milliseconds>(duration).count();
}

using Reader = std::function<ServerMetrics(const ProcessOutcome&)>;

/// What `read` makes of the outcome. On threads of its own, so that a large answer keeps neither the main thread nor
/// ProcessRunner's from its work.
QFuture<ServerMetrics> readInBackground(QFuture<ProcessOutcome> running, const Reader& read) {
    const auto promise = std::make_shared<QPromise<ServerMetrics>>();
    promise->start();
    running.then([promise, read](const ProcessOutcome& outcome) {
        static BackgroundThreads threads(2);
        const auto work = [promise, read, outcome] {
            promise->addResult(read(outcome));
            promise->finish();
        };
        if (!threads.run({work}))
            work();
    });
    return promise->future();
}

/// One probe, which deletes itself when it has ended: with what it was told, or a local one at its limit. What comes
/// later is dropped.
class Probe : public QObject {
public:
    Probe() : QObject(QCoreApplication::instance()) { promise_.start(); }

    [[nodiscard]] QFuture<ServerMetrics> remote(const Server& server, const ProbeManner& manner) {
        const ProcessRequest request = SSHMetricsCollector::remoteProbeRequest(server, manner);
        const QString shared = manner.sharedFor ? SharedConnection::path(server) : QString();
        if (QFile::exists(shared))
            tryShared(request, shared);
        else
            follow(ProcessRunner::run(request), &SSHMetricsCollector::remoteMetrics);
        return promise_.future();
    }

    [[nodiscard]] QFuture<ServerMetrics> local(ThisComputer& computer) {
        sinceBegin_.start();
        limit_.setSingleShot(true);
        limit_.setTimerType(Qt::PreciseTimer);
        connect(&limit_, &QTimer::timeout, this, [this] { end(ServerMetrics::offline(noAnswer())); });
        limit_.start(probeTimeLimit);
        await<ProbedFigures>(computer.figures(), [this](const std::optional<ProbedFigures>& figures) {
            if (!figures)
                return end(SSHMetricsCollector::localMetrics(ProcessOutcome::notStarted(qt_error_string(EAGAIN)), {}));
            const std::chrono::nanoseconds beforeLaunch(sinceBegin_.nsecsElapsed());
            ProcessRequest request = SSHMetricsCollector::localProbeRequest(*figures);
            request.timeLimit = limit_.remainingTimeAsDuration();
            follow(ProcessRunner::run(request), [beforeLaunch](const ProcessOutcome& outcome) {
                return SSHMetricsCollector::localMetrics(outcome, beforeLaunch);
            });
        });
        return promise_.future();
    }

private:
    /// Over the connection at this socket; over a new one if that fails.
    void tryShared(ProcessRequest request, const QString& socket) {
        ProcessRequest attempt = request;
        attempt.timeLimit = SharedConnection::patience;
        request.timeLimit -= SharedConnection::patience;
        await<ProcessOutcome>(ProcessRunner::run(attempt),
                              [this, request, socket](const std::optional<ProcessOutcome>& outcome) {
                                  if (!outcome)
                                      return end(std::nullopt);
                                  const bool isLost = SharedConnection::isLost(*outcome);
                                  if (isLost)
                                      SharedConnection::drop(socket);
                                  follow(isLost ? ProcessRunner::run(request) : QtFuture::makeReadyFuture(*outcome),
                                         &SSHMetricsCollector::remoteMetrics);
                              });
    }
    /// `done` gets no value when the future was cancelled.
    template <typename Value>
    void await(const QFuture<Value>& future, std::function<void(const std::optional<Value>&)> done) {
        auto* watcher = new QFutureWatcher<Value>(this);
        connect(watcher, &QFutureWatcherBase::finished, this, [watcher, done = std::move(done)] {
            done(watcher->future().resultCount() > 0 ? std::optional(watcher->result()) : std::nullopt);
        });
        watcher->setFuture(future);
    }
    void follow(const QFuture<ProcessOutcome>& running, const Reader& read) {
        await<ServerMetrics>(
            readInBackground(running, read), [this](const std::optional<ServerMetrics>& metrics) { end(metrics); });
    }
    /// Without metrics the future is cancelled.
    void end(const std::optional<ServerMetrics>& metrics) {
        if (metrics)
            promise_.addResult(*metrics);
        else
            promise_.future().cancel();
        promise_.finish();
        for (QObject* source : children())
            source->disconnect(this);
        deleteLater();
    }

    QPromise<ServerMetrics> promise_;
    QElapsedTimer sinceBegin_;
    QTimer limit_{this};
};

} // namespace

QFuture<ServerMetrics> SSHMetricsCollector::collect(const Server& server, ThisComputer& computer,
                                                    const ProbeManner& manner) {
    auto* const probe = new Probe;
    return server.isLocal ? probe->local(computer) : probe->remote(server, manner);
}

QFuture<std::optional<QString>> SSHMetricsCollector::changeContainer(const Server& server, const QString& containerId,
                                                                     ContainerAction action) {
    return ProcessRunner::run(actionRequest(server, containerId, action)).then([server](const ProcessOutcome& outcome) {
        return actionFailure(outcome, server);
    });
}

ProcessRequest SSHMetricsCollector::remoteProbeRequest(const Server& server, const ProbeManner& manner) {
    // No prompts. Any host key is accepted, and none is recorded. No warnings, which would be taken for the reason.
    QStringList arguments{u"-o"_s, u"BatchMode=yes"_s,
                          u"-o"_s, u"ConnectTimeout=5"_s,
                          u"-o"_s, u"StrictHostKeyChecking=no"_s,
                          u"-o"_s, u"UserKnownHostsFile=/dev/null"_s,
                          u"-o"_s, u"LogLevel=ERROR"_s};
    if (const QString shared = manner.sharedFor ? SharedConnection::path(server) : QString(); !shared.isEmpty())
        arguments << SharedConnection::options(shared, *manner.sharedFor);
    arguments << connectionArguments(server) << ProbeScripts::remote();
    return {.executable = sshClient,
            .arguments = arguments,
            .timeLimit = probeTimeLimit,
            .standardOutputLimit = probeLineLimit,
            .standardErrorKept = standardErrorKept,
            .launch = manner.launch};
}

ProcessRequest SSHMetricsCollector::localProbeRequest(const ProbedFigures& figures) {
    const QString script =
        ProbeScripts::local(figures.cpuPercent, figures.gpuPercent.value_or(0), figures.ram, figures.disk);
    return {.executable = localShell,
            .arguments = {u"-c"_s, shellSysctl() + script},
            .timeLimit = probeTimeLimit,
            .standardOutputLimit = probeLineLimit};
}

ProcessRequest SSHMetricsCollector::actionRequest(const Server& server, const QString& containerId,
                                                  ContainerAction action) {
    const QString operation = u' ' + verb(action) + u' ' + ShellWord::operand(containerId);
    const QString command = u"docker"_s + operation;
    QString executable = sshClient;
    QStringList arguments{u"-o"_s, u"BatchMode=yes"_s, u"-o"_s, u"ConnectTimeout=5"_s};
    if (server.isLocal) {
        // The complaints of start and stop are wanted even where there is no second client.
        const QString first = action == ContainerAction::restart ? command + u" 2>/dev/null"_s : command;
        executable = localShell;
        arguments = {u"-c"_s, first + u" || ~"_s + secondClient + operation};
    } else {
        arguments << connectionArguments(server) << command;
    }
    return {.executable = executable,
            .arguments = arguments,
            .timeLimit = actionTimeLimit,
            .standardErrorKept = standardErrorKept};
}

ServerMetrics SSHMetricsCollector::remoteMetrics(const ProcessOutcome& outcome) {
    if (const auto failure = runFailure(outcome, sshClient))
        return ServerMetrics::offline(*failure);
    if (!outcome.succeeded())
        return ServerMetrics::offline(reasonOfFailedClient(outcome));
    const std::optional<QString> line = decodedUtf8(outcome.standardOutput);
    if (!line)
        return ServerMetrics::offline(u"Invalid response from server"_s);
    return parseMetrics(line->trimmed().toUtf8(), wholeMilliseconds(outcome.elapsed));
}

ServerMetrics SSHMetricsCollector::localMetrics(const ProcessOutcome& outcome, std::chrono::nanoseconds beforeLaunch) {
    if (const auto failure = runFailure(outcome, localShell))
        return ServerMetrics::offline(*failure);
    // The exit status does not matter when the shell printed a probe line.
    return parseMetrics(outcome.standardOutput, wholeMilliseconds(beforeLaunch + outcome.elapsed));
}

std::optional<QString> SSHMetricsCollector::actionFailure(const ProcessOutcome& outcome, const Server& server) {
    if (outcome.succeeded())
        return std::nullopt;
    if (auto failure = runFailure(outcome, server.isLocal ? localShell : sshClient, actionTimeLimit))
        return failure;
    const QString line = tellingLine(complaint(outcome).value_or(QString()));
    return line.isEmpty() ? u"docker failed without a reason"_s : line;
}

} // namespace tarnwick
