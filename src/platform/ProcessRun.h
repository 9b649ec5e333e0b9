#pragma once

#include "ProcessRunner.h"

#include <QElapsedTimer>
#include <QObject>
#include <QProcess>
#include <QPromise>
#include <QTimer>

namespace tarnwick {

/// One run of one program, from launch to outcome. Lives in the thread of its parent, and deletes itself once its
/// child is reaped. Destroyed before that, it kills the child's process group and leaves the future cancelled.
class ProcessRun : public QObject {
    Q_OBJECT

public:
    /// The promise has been started.
    ProcessRun(ProcessRequest request, QPromise<ProcessOutcome> promise, QObject* parent);
    ~ProcessRun() override;

    void start();
    /// Kills the child with its process group. This alone gives no outcome.
    void killGroup();

Q_SIGNALS:
    /// The outcome has been given.
    void settled();

private:
    void readStandardOutput();
    void readStandardError();
    void processFinished(int status, QProcess::ExitStatus exitStatus);
    void failToStart(const QString& reason);
    /// Gives the outcome, once. At a limit it is given right after the kill, because a child in an uninterruptible wait
    /// may end much later.
    void settle(ProcessOutcome::End end);

    const ProcessRequest request_;
    QPromise<ProcessOutcome> promise_;
    QElapsedTimer sinceStart_;
    ProcessOutcome outcome_;
    bool isSettled_ = false;
    QTimer timeLimit_;
    QProcess process_;
};

} // namespace tarnwick
