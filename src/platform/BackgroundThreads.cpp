#include "BackgroundThreads.h"

#include <iterator>
#include <system_error>
#include <utility>

namespace tarnwick {

BackgroundThreads::~BackgroundThreads() {
    Work dropped;
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
        dropped.swap(waiting_);
    }
    workCame_.notify_all();
    for (std::thread& thread : threads_)
        thread.join();
}

bool BackgroundThreads::run(std::vector<std::function<void()>> work) {
    Work dropped; // destroyed after unlocking: whatever the work holds may run something here
    const std::lock_guard lock(mutex_);
    std::move(work.begin(), work.end(), std::back_inserter(waiting_));
    if (waiting_.empty() || isThreadComing_)
        return true;
    isThreadComing_ = sendThread();
    if (threads_.empty())
        dropped.swap(waiting_);
    return !threads_.empty();
}

bool BackgroundThreads::sendThread() {
    if (idle_ > 0) {
        workCame_.notify_one();
        return true;
    }
    if (threads_.size() == most_)
        return false;
    try {
        threads_.emplace_back([this] { work(); });
        return true;
    } catch (const std::system_error&) {
        return false;
    }
}

void BackgroundThreads::work() {
    std::unique_lock lock(mutex_);
    for (;;) {
        ++idle_;
        workCame_.wait(lock, [this] { return isEnding_ || !waiting_.empty(); });
        --idle_;
        isThreadComing_ = false;
        if (waiting_.empty())
            return;
        std::function<void()> next = std::move(waiting_.front());
        waiting_.pop_front();
        lock.unlock();
        next();
        next = nullptr; // what it holds is released without the lock
        lock.lock();
    }
}

} // namespace tarnwick
