#include "SSHMetricsCollector.h"

#include "ProbePayload.h"
#include "ProbeScripts.h"
#include "ShellWord.h"
#include "ThisComputer.h"
#include "TildeExpansion.h"

#include <QElapsedTimer>
#include <QPromise>
#include <QStringDecoder>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace tarnwick {

namespace {

constexpr QLatin1StringView sshClient = "/usr/bin/ssh"_L1;
constexpr QLatin1StringView localShell = "/bin/sh"_L1;
constexpr std::chrono::seconds probeTimeLimit = 30s;
constexpr std::chrono::seconds restartTimeLimit = 120s;
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

/// Why the process did not run to its end; absent when it did.
std::optional<QString> runFailure(const ProcessOutcome& outcome, QLatin1StringView executable) {
    switch (outcome.end) {
    case ProcessOutcome::End::failedToStart:
        return u"Cannot start %1: %2"_s.arg(executable, outcome.launchError);
    case ProcessOutcome::End::timedOut:
        return u"No answer within %1 seconds"_s.arg(probeTimeLimit.count());
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

QString reasonOfFailedClient(const ProcessOutcome& outcome) {
    const bool isCut = outcome.standardError.size() >= standardErrorKept;
    const std::optional<QString> text =
        decodedUtf8(isCut ? withoutCutCharacter(outcome.standardError) : outcome.standardError);
    if (!text)
        return u"SSH exited with code %1"_s.arg(outcome.status);
    const QString reason = text->trimmed();
    return reason.isEmpty() ? u"Connection refused / timeout"_s : reason;
}

qint64 wholeMilliseconds(std::chrono::nanoseconds duration) {
    return std::chrono::duration_cast<std::chrono::milliseconds>(duration).count();
}

// Answers are parsed on the thread pool, so that a large one does not keep ProcessRunner's thread from its processes.

QFuture<ServerMetrics> collectRemote(const Server& server) {
    return ProcessRunner::run(SSHMetricsCollector::remoteProbeRequest(server))
        .then(QtFuture::Launch::Async, &SSHMetricsCollector::remoteMetrics);
}

QFuture<ServerMetrics> collectLocal(ThisComputer& computer) {
    const auto probe = [&computer] {
        QElapsedTimer clock;
        clock.start();
        const ProcessRequest request = SSHMetricsCollector::localProbeRequest(computer);
        const std::chrono::nanoseconds beforeLaunch(clock.nsecsElapsed());
        return ProcessRunner::run(request).then(QtFuture::Launch::Async, [beforeLaunch](const ProcessOutcome& outcome) {
            return SSHMetricsCollector::localMetrics(outcome, beforeLaunch);
        });
    };
    QPromise<void> now;
    now.start();
    now.finish();
    return now.future().then(QtFuture::Launch::Async, probe).unwrap();
}

} // namespace

QFuture<ServerMetrics> SSHMetricsCollector::collect(const Server& server, ThisComputer& computer) {
    return server.isLocal ? collectLocal(computer) : collectRemote(server);
}

QFuture<bool> SSHMetricsCollector::restartContainer(const Server& server, const QString& containerId) {
    return ProcessRunner::run(restartRequest(server, containerId)).then([](const ProcessOutcome& outcome) {
        return outcome.succeeded();
    });
}

ProcessRequest SSHMetricsCollector::remoteProbeRequest(const Server& server) {
    // No prompts. Any host key is accepted, and none is recorded. No warnings, which would be taken for the reason.
    QStringList arguments{u"-o"_s, u"BatchMode=yes"_s,
                          u"-o"_s, u"ConnectTimeout=5"_s,
                          u"-o"_s, u"StrictHostKeyChecking=no"_s,
                          u"-o"_s, u"UserKnownHostsFile=/dev/null"_s,
                          u"-o"_s, u"LogLevel=ERROR"_s};
    arguments << connectionArguments(server) << ProbeScripts::remote();
    return {.executable = sshClient,
            .arguments = arguments,
            .timeLimit = probeTimeLimit,
            .standardOutputLimit = probeLineLimit,
            .standardErrorKept = standardErrorKept};
}

ProcessRequest SSHMetricsCollector::localProbeRequest(ThisComputer& computer) {
    const QString script =
        ProbeScripts::local(computer.cpuPercent(), computer.gpuPercent().value_or(0), computer.ram(), computer.disk());
    return {.executable = localShell,
            .arguments = {u"-c"_s, shellSysctl() + script},
            .timeLimit = probeTimeLimit,
            .standardOutputLimit = probeLineLimit};
}

ProcessRequest SSHMetricsCollector::restartRequest(const Server& server, const QString& containerId) {
    const QString command = u"docker restart "_s + ShellWord::operand(containerId);
    if (server.isLocal)
        return {.executable = localShell,
                .arguments = {u"-c"_s, command + u" 2>/dev/null || ~/.orbstack/bin/"_s + command},
                .timeLimit = restartTimeLimit};
    QStringList arguments{u"-o"_s, u"BatchMode=yes"_s, u"-o"_s, u"ConnectTimeout=5"_s};
    arguments << connectionArguments(server) << command;
    return {.executable = sshClient, .arguments = arguments, .timeLimit = restartTimeLimit};
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

} // namespace tarnwick
