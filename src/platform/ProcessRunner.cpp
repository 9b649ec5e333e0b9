#include "ProcessRunner.h"

#include "ChildSetup.h"
#include "FreeMemory.h"
#include "ProcessRun.h"

#include <QChildEvent>
#include <QCoreApplication>
#include <QFile>
#include <QMutex>
#include <QThread>

#include <memory>
#include <utility>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace tarnwick::ProcessRunner {

namespace {

/// The parent of all runs, in the worker thread.
class Runs : public QObject {
public:
    ~Runs() override {
        // All are killed before the first one is waited for.
        for (ProcessRun* run : findChildren<ProcessRun*>(Qt::FindDirectChildrenOnly))
            run->killGroup();
    }

protected:
    void childEvent(QChildEvent* event) override {
        // A burst of a thousand runs leaves 20 MB of free memory behind.
        if (event->removed() && children().isEmpty())
            returnFreeMemory();
    }
};

class Worker {
public:
    Worker() {
        thread_.setObjectName(u"processes"_s);
        runs_->moveToThread(&thread_);
        QObject::connect(&thread_, &QThread::finished, runs_, &QObject::deleteLater);
        thread_.start();
    }
    ~Worker() {
        thread_.quit();
        thread_.wait();
    }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    /// The object whose thread does the work.
    [[nodiscard]] Runs* runs() const { return runs_; }

private:
    QThread thread_;
    Runs* runs_ = new Runs; // deletes itself when the thread ends
};

QMutex workerMutex;
std::unique_ptr<Worker> worker;

void stopWorker() {
    std::unique_ptr<Worker> stopping; // goes after the lock: what follows a cancelled run may ask for another run
    const QMutexLocker lock(&workerMutex);
    stopping.swap(worker);
}

} // namespace

QFuture<ProcessOutcome> run(const ProcessRequest& request) {
    QElapsedTimer sinceRequest;
    sinceRequest.start();
    auto promise = std::make_shared<QPromise<ProcessOutcome>>();
    QFuture<ProcessOutcome> future = promise->future();
    promise->start();

    const QMutexLocker lock(&workerMutex);
    if (!QCoreApplication::instance())
        return future; // the promise goes out of scope: cancelled
    if (!worker) {
        worker = std::make_unique<Worker>();
        qAddPostRoutine(stopWorker);
    }
    Runs* runs = worker->runs();
    QMetaObject::invokeMethod(runs, [runs, request, promise, sinceRequest] {
        (new ProcessRun(request, std::move(*promise), sinceRequest, runs))->start();
    });
    return future;
}

bool startDetached(const QString& executable, const QStringList& arguments) {
    if (::access(QFile::encodeName(executable).constData(), X_OK) != 0)
        return false;
    // A detached start knows no set-up of the child, so a shell gives the limit back before it becomes the program.
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
