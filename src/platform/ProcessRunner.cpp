#include "ProcessRunner.h"

#include "ChildSetup.h"
#include "FreeMemory.h"
#include "ProcessRun.h"

#include <QBasicTimer>
#include <QChildEvent>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QMutex>
#include <QPointer>
#include <QThread>

#include <cerrno>
#include <deque>
#include <memory>
#include <utility>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace tarnwick::ProcessRunner {

namespace {

/// The parent of all runs, in the worker thread.
class Runs : public QObject {
public:
    using Promise = std::shared_ptr<QPromise<ProcessOutcome>>;

    /// Starts the run after all earlier requests, a few in each turn of the event loop. In between, the loop notices
    /// the children that have ended, so that their time does not include the start of all the others.
    void startInTurn(const ProcessRequest& request, const Promise& promise) {
        waiting_.push_back({request, promise});
        turns_.start(0, this);
    }
    ~Runs() override {
        // Kills all before the destructors wait for each.
        for (ProcessRun* run : findChildren<ProcessRun*>(Qt::FindDirectChildrenOnly))
            run->killGroup();
    }

protected:
    void timerEvent(QTimerEvent* /*event*/) override {
        const QDeadlineTimer turnEnd(turnLength);
        do {
            const auto [request, promise] = std::move(waiting_.front());
            waiting_.pop_front();
            (new ProcessRun(request, std::move(*promise), this))->start();
        } while (!waiting_.empty() && !turnEnd.hasExpired());
        if (waiting_.empty())
            turns_.stop();
    }
    void childEvent(QChildEvent* event) override {
        // A burst of a thousand runs leaves 20 MB of free memory behind.
        if (event->removed() && children().isEmpty() && waiting_.empty())
            returnFreeMemory();
    }

private:
    static constexpr std::chrono::milliseconds turnLength{5}; // at most so much too long is the time of a child

    struct Waiting {
        ProcessRequest request;
        Promise promise;
    };
    std::deque<Waiting> waiting_;
    QBasicTimer turns_;
};

class Worker {
public:
    Worker() {
        thread_.setObjectName(u"processes"_s);
        runs_->moveToThread(&thread_);
        QObject::connect(&thread_, &QThread::finished, runs_.get(), &QObject::deleteLater);
        thread_.start();
    }
    ~Worker() {
        thread_.quit();
        thread_.wait();
        delete runs_; // of a thread that never ran
    }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    /// False also when the system could not make the thread.
    [[nodiscard]] bool isRunning() const { return thread_.isRunning(); }
    /// Lives in the worker thread.
    [[nodiscard]] Runs* runs() const { return runs_; }

private:
    QThread thread_;
    QPointer<Runs> runs_ = new Runs; // deletes itself when the thread ends
};

QMutex workerMutex;
std::unique_ptr<Worker> worker;

} // namespace

void endAll() {
    std::unique_ptr<Worker> ending; // destroyed after unlocking: a continuation may call run()
    const QMutexLocker lock(&workerMutex);
    ending.swap(worker);
}

QFuture<ProcessOutcome> run(const ProcessRequest& request) {
    auto promise = std::make_shared<QPromise<ProcessOutcome>>();
    QFuture<ProcessOutcome> future = promise->future();
    promise->start();

    QMutexLocker lock(&workerMutex);
    if (!QCoreApplication::instance())
        return future; // cancelled, because the promise is destroyed
    if (!worker || !worker->isRunning()) {
        worker = std::make_unique<Worker>();
        qRemovePostRoutine(endAll);
        qAddPostRoutine(endAll);
    }
    if (worker->isRunning()) {
        Runs* runs = worker->runs();
        QMetaObject::invokeMethod(runs, [runs, request, promise] { runs->startInTurn(request, promise); });
        return future;
    }
    lock.unlock();                                                           // a continuation may call run()
    promise->addResult(ProcessOutcome::notStarted(qt_error_string(EAGAIN))); // QThread does not tell the reason
    promise->finish();
    return future;
}

bool startDetached(const QString& executable, const QStringList& arguments) {
    if (::access(QFile::encodeName(executable).constData(), X_OK) != 0)
        return false;
    // startDetached() cannot set up the child, so a shell restores the limit before it becomes the program.
    const QString giveBackAndBecome = u"ulimit -Sn %1; exec \"$0\" \"$@\""_s.arg(ChildSetup::openFileLimit());
    QProcess process;
    process.setProgram(u"/bin/sh"_s);
    process.setArguments(QStringList{u"-c"_s, giveBackAndBecome, executable} + arguments);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    return process.startDetached();
}

void raiseOpenFileLimit() {
    ChildSetup::raiseOpenFileLimit();
}

} // namespace tarnwick::ProcessRunner
