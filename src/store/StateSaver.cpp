#include "StateSaver.h"

#include <QDeadlineTimer>
#include <QFileInfo>
#include <QPromise>
#include <QSemaphore>

#include <algorithm>
#include <system_error>
#include <utility>

namespace tarnwick {

struct StateSaver::Job {
    Job(Work wanted, StoredState state, Instant at) : work(wanted), asked(std::move(state)), found(asked), now(at) {
        promise.start();
    }

    Work work;
    StoredState asked;
    StoredState found;
    Instant now;
    bool isNew = false;
    QPromise<void> promise; ///< tells the event loop
    QSemaphore ended;       ///< tells who waits for a limited time, which a future cannot

    void run(StateFiles& files) {
        isNew = work == Work::save ? files.save(found, now) : files.takeIn(found);
        promise.finish();
        ended.release();
    }
};

StateSaver::StateSaver(const QString& folder, Client client)
    : client_(std::move(client)), files_(std::make_shared<StateFiles>(folder)) {
    if (QFileInfo(folder).isDir())
        folder_.addPath(folder);
    connect(&folder_, &QFileSystemWatcher::directoryChanged, this, &StateSaver::look);
}

StateSaver::~StateSaver() {
    if (!gaveUp_)
        finish();
    if (thread_.joinable())
        thread_.detach();
}

StoredState StateSaver::load() {
    return files_->load();
}

void StateSaver::ask(Work work) {
    asked_ = std::max(asked_, work);
    start();
}

void StateSaver::start() {
    if (job_ || asked_ == Work::none)
        return;
    const auto job = std::make_shared<Job>(asked_, client_.state(), client_.clock());
    asked_ = Work::none;
    job_ = job;
    try {
        thread_ = std::thread([job, files = files_] { job->run(*files); });
    } catch (const std::system_error&) {
        job->run(*files_); // no thread can be had: slow here is better than lost
    }
    watcher_ = std::make_unique<QFutureWatcher<void>>();
    connect(watcher_.get(), &QFutureWatcherBase::finished, this, &StateSaver::end);
    watcher_->setFuture(job_->promise.future());
}

void StateSaver::end() {
    watcher_->disconnect(this);
    watcher_.release()->deleteLater(); // this may be its signal
    if (thread_.joinable())
        thread_.join(); // it has nothing left to do
    const std::shared_ptr<Job> job = std::exchange(job_, nullptr);
    // Before more work begins, because that is on top of what the files hold now.
    if (job->isNew)
        client_.adopt(job->asked, job->found);
    start();
}

bool StateSaver::finish() {
    const QDeadlineTimer deadline(patience);
    start();
    while (job_ && job_->ended.tryAcquire(1, static_cast<int>(deadline.remainingTime())))
        end();
    gaveUp_ = job_ != nullptr;
    return !job_ && asked_ == Work::none;
}

} // namespace tarnwick
