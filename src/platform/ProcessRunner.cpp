#include "ProcessRunner.h"

#include "ChildSetup.h"
#include "FreeMemory.h"
#include "KernelReadings.h"
#include "LaunchWindow.h"
#include "ProcessRun.h"

#include <QBasicTimer>
#include <QChildEvent>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QMutex>
#include <QPointer>
#include <QThread>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <deque>
#include <memory>
#include <utility>

#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace tarnwick::ProcessRunner {

namespace {

/// The parent of all runs, in the worker thread.
class Runs : public QObject {
public:
    using Promise = std::shared_ptr<QPromise<ProcessOutcome>>;

    /// Starts the run after all earlier requests of its kind, a few in each turn of the event loop. In between, the
    /// loop notices the children that have ended, so that their time does not include the start of all the others.
    void startInTurn(const ProcessRequest& request, const Promise& promise) {
        (request.launch == ProcessRequest::Launch::paced ? paced_ : urgent_).push_back({request, promise});
        turns_.start(0, this);
    }
    ~Runs() override {
        // Kills all before the destructors wait for each.
        for (ProcessRun* run : findChildren<ProcessRun*>(Qt::FindDirectChildrenOnly))
            run->killGroup();
    }

protected:
    void timerEvent(QTimerEvent* event) override {
        if (event->timerId() == looks_.timerId())
            window_.look(kernelCpuTicks());
        const QDeadlineTimer turnEnd(turnLength);
        while (startNext() && !turnEnd.hasExpired())
            continue;
        awaitTurn();
    }
    void childEvent(QChildEvent* event) override {
        if (!event->removed() || !children().isEmpty() || isWaiting())
            return;
        window_ = {};
        returnFreeMemory(); // a burst of a thousand runs leaves 20 MB behind
    }

private:
    static constexpr std::chrono::milliseconds turnLength{5}; // at most so much too long is the time of a child

    struct Waiting {
        ProcessRequest request;
        Promise promise;
    };

    [[nodiscard]] static LaunchWindow::Time now() { return std::chrono::steady_clock::now().time_since_epoch(); }
    [[nodiscard]] bool isWaiting() const { return !urgent_.empty() || !paced_.empty(); }

    /// False when there is none that may be started now.
    bool startNext() {
        if (!urgent_.empty()) {
            take(urgent_)->start();
            return true;
        }
        const LaunchWindow::Time launched = now();
        if (paced_.empty() || !window_.hasRoom(launched))
            return false;
        window_.launch(launched);
        ProcessRun* const run = take(paced_);
        connect(run, &ProcessRun::settled, this, [this, launched] {
            window_.end(launched, now());
            if (!paced_.empty())
                turns_.start(0, this);
        });
        run->start();
        return true;
    }
    /// Has the next turn come when something may be started.
    void awaitTurn() {
        paced_.empty() ? looks_.stop() : keepLooking();
        if (!isWaiting())
            return turns_.stop();
        const bool isFull = urgent_.empty() && !window_.hasRoom(now());
        turns_.start(isFull ? toRelease() : 0, this);
    }
    /// Milliseconds.
    [[nodiscard]] int toRelease() const {
        const auto wait = std::chrono::ceil<std::chrono::milliseconds>(window_.untilRelease(now()));
        return static_cast<int>(wait.count());
    }
    void keepLooking() {
        if (looks_.isActive())
            return;
        window_.look(kernelCpuTicks());
        looks_.start(static_cast<int>(LaunchWindow::lookPeriod.count()), this);
    }
    [[nodiscard]] ProcessRun* take(std::deque<Waiting>& queue) {
        const auto [request, promise] = std::move(queue.front());
        queue.pop_front();
        return new ProcessRun(request, std::move(*promise), this);
    }

    std::deque<Waiting> urgent_;
    std::deque<Waiting> paced_;
    LaunchWindow window_;
    QBasicTimer turns_;
    QBasicTimer looks_;
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
