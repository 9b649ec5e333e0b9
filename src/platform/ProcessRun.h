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
    /// `sinceRequest` runs since the request was made. The promise is started already.
    ProcessRun(ProcessRequest request, QPromise<ProcessOutcome> promise, QElapsedTimer sinceRequest, QObject* parent);
    ~ProcessRun() override;

    void start();
    /// Kills the child with its process group; the outcome stays open.
    void killGroup();

private:
    void readStandardOutput();
    void readStandardError();
    void processFinished(int status, QProcess::ExitStatus exitStatus);
    void failToStart(const QString& reason);
    /// Gives the outcome, once. At a limit that is right after the kill: a child in an uninterruptible wait must not
    /// hold it up.
    void settle(ProcessOutcome::End end);

    const ProcessRequest request_;
    QPromise<ProcessOutcome> promise_;
    const QElapsedTimer sinceRequest_;
    ProcessOutcome outcome_;
    bool settled_ = false;
    QTimer timeLimit_;
    QProcess process_;
};

} // namespace tarnwick
