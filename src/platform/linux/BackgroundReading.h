#pragma once

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QThreadPool>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <utility>

namespace tarnwick {

/// A reading that may take long, as those do that firmware answers. It is taken on a thread of a pool. Whoever asks
/// for it gets the last value, and waits for the one under way only if the one before it was quick.
template <typename Value>
class BackgroundReading {
public:
    /// `take` is called on one thread at a time. What takes longer than `patience` is slow; a reading that is known to
    /// be slow is so from the start.
    BackgroundReading(std::function<Value()> take, Value first, std::chrono::milliseconds patience, bool isKnownSlow)
        : state_(std::make_shared<State>()) {
        state_->take = std::move(take);
        state_->value = std::move(first);
        state_->patience = patience;
        state_->isKnownSlow = isKnownSlow;
        state_->isSlow = isKnownSlow;
    }

    /// Does nothing while a reading is under way.
    void start(QThreadPool& pool) {
        const std::lock_guard lock(state_->mutex);
        if (!std::exchange(state_->isUnderWay, true))
            pool.start([state = state_] { state->run(); });
    }

    [[nodiscard]] Value value(QDeadlineTimer deadline) const {
        std::unique_lock lock(state_->mutex);
        const auto isDone = [this] {
            return !state_->isUnderWay;
        };
        if (!state_->isSlow)
            state_->isSlow = !state_->done.wait_for(lock, deadline.remainingTimeAsDuration(), isDone);
        return state_->value;
    }

private:
    struct State {
        std::function<Value()> take;
        std::chrono::milliseconds patience{};
        bool isKnownSlow = false;
        std::mutex mutex; ///< guards what follows
        std::condition_variable done;
        Value value;
        bool isUnderWay = false;
        bool isSlow = false;

        void run() {
            QElapsedTimer clock;
            clock.start();
            Value taken = take();
            const std::lock_guard lock(mutex);
            value = std::move(taken);
            isSlow = isKnownSlow || std::chrono::milliseconds(clock.elapsed()) > patience;
            isUnderWay = false;
            done.notify_all();
        }
    };

    std::shared_ptr<State> state_;
};

} // namespace tarnwick
