#pragma once

#include <QByteArray>
#include <QFuture>
#include <QString>
#include <QStringList>

#include <chrono>

namespace tarnwick {

/// One run of one program, without a shell in between.
struct ProcessRequest {
    enum class Launch {
        atOnce, ///< before all that are paced
        paced,  ///< in the order of the requests, as many at a time as the computer can carry; see LaunchWindow
    };
    QString executable;                          ///< absolute path
    QStringList arguments;                       ///< without the program's own name
    std::chrono::milliseconds timeLimit{30'000}; ///< from launch; then the child's process group is killed
    qint64 standardOutputLimit = 0; ///< bytes; 0: not captured (null device); more than that kills the process group
    qint64 standardErrorKept = 0;   ///< bytes kept, the rest is dropped; 0: not captured, inherits ours
    Launch launch = Launch::atOnce;
};

/// How a run ended.
struct ProcessOutcome {
    enum class End {
        failedToStart,  ///< `launchError` says why
        exited,         ///< `status` is the exit status
        signalled,      ///< `status` is the signal's number
        timedOut,       ///< killed at the time limit
        outputTooLarge, ///< killed for exceeding the limit on standard output
    };
    End end = End::failedToStart;
    int status = 0;
    QString launchError; ///< the operating system's reason, one line
    QByteArray standardOutput;
    QByteArray standardError;
    /// Monotonic time from the child's start, not from the call of run(), to its exit.
    std::chrono::nanoseconds elapsed{0};

    [[nodiscard]] bool succeeded() const { return end == End::exited && status == 0; }
    [[nodiscard]] static ProcessOutcome notStarted(const QString& reason) {
        ProcessOutcome outcome;
        outcome.launchError = reason;
        return outcome;
    }
};

/// Starts programs and watches them from one worker thread that owns them all; nothing waits on the caller's thread.
///
/// Each child leads its own process group, reads the null device on standard input, runs under `LC_ALL=C` and with the
/// limit on open files that this process was started with. It knows of no display and no terminal, so that an ssh
/// client in it asks nobody for a password. Both pipes are drained while it runs. The run ends with the child's exit
/// even when a grandchild still holds a pipe open; what has arrived by then is the output.
namespace ProcessRunner {

/// Any thread. The future finishes with exactly one outcome; only when the application exits, children that still run
/// are killed and their futures are cancelled. While the system cannot make the worker thread, no run can be started;
/// a later one is.
[[nodiscard]] QFuture<ProcessOutcome> run(const ProcessRequest& request);

/// Kills the children that still run, and cancels their futures. Happens by itself when the application is destroyed.
void endAll();

/// Starts a program and forgets it: it gets its own session, the null device on all three streams, and our
/// environment. Any thread.
/// False when it could not be started.
bool startDetached(const QString& executable, const QStringList& arguments);

/// Raises the soft limit on open files to the hard limit, because a fleet of a thousand is a thousand processes at
/// once. Call once, before the first run(); children get the old limit back.
void raiseOpenFileLimit();

} // namespace ProcessRunner

} // namespace tarnwick
