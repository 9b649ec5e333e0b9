#pragma once

#include <QtGlobal>

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace tarnwick {

/// Threads for work that may take long, such as readings. To wake a thread costs more than most readings, so one does
/// all that waits; what waits behind work that hangs is done by another thread when there is work again. Not a
/// QThreadPool: that one loses a thread for ever, and the work with it, each time that the system cannot make one. Any
/// thread.
class BackgroundThreads {
public:
    /// Work that hangs takes no more than `most` threads with it.
    explicit BackgroundThreads(std::size_t most) : most_(most) {}
    /// Drops what has not begun, and waits for the rest.
    ~BackgroundThreads();
    Q_DISABLE_COPY_MOVE(BackgroundThreads)

    /// False when there is no thread and the system cannot make one now: then the work is dropped, as is all that
    /// waits.
    bool run(std::vector<std::function<void()>> work);

private:
    using Work = std::deque<std::function<void()>>;

    [[nodiscard]] bool sendThread();
    void work();

    const std::size_t most_;
    std::mutex mutex_; ///< guards what follows
    std::condition_variable workCame_;
    Work waiting_;
    std::vector<std::thread> threads_;
    std::size_t idle_ = 0;
    bool isThreadComing_ = false; ///< it will do all that waits
    bool isEnding_ = false;
};

} // namespace tarnwick
