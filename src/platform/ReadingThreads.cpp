#include "ReadingThreads.h"

#include <iterator>
#include <utility>

namespace tarnwick {

ReadingThreads::~ReadingThreads() {
    {
        const std::lock_guard lock(mutex_);
        waiting_.clear();
    }
    pool_.waitForDone();
}

void ReadingThreads::run(std::vector<std::function<void()>> work) {
    const std::lock_guard lock(mutex_);
    std::move(work.begin(), work.end(), std::back_inserter(waiting_));
    if (!waiting_.empty() && !std::exchange(isThreadComing_, true))
        pool_.start([this] { runAll(); });
}

void ReadingThreads::runAll() {
    std::unique_lock lock(mutex_);
    isThreadComing_ = false;
    while (!waiting_.empty()) {
        const std::function<void()> next = std::move(waiting_.front());
        waiting_.pop_front();
        lock.unlock();
        next();
        lock.lock();
    }
}

} // namespace tarnwick
