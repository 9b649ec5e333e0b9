#pragma once

#include <QThreadPool>

#include <deque>
#include <functional>
#include <mutex>
#include <vector>

namespace tarnwick {

/// The threads that take readings. To wake a thread costs more than most readings, so one takes all that are due; what
/// waits behind a reading that hangs is taken by another thread when there is work again. Any thread.
class ReadingThreads {
public:
    /// Readings that hang take no more than `mostThreads` with them.
    explicit ReadingThreads(int mostThreads) { pool_.setMaxThreadCount(mostThreads); }
    /// Drops what has not begun, and waits for the rest.
    ~ReadingThreads();
    Q_DISABLE_COPY_MOVE(ReadingThreads)

    void run(std::vector<std::function<void()>> work);

private:
    void runAll();

    std::mutex mutex_; ///< guards the next two
    std::deque<std::function<void()>> waiting_;
    bool isThreadComing_ = false; ///< it will run all that waits
    QThreadPool pool_;
};

} // namespace tarnwick
