#pragma once

#include <QDeadlineTimer>
#include <QElapsedTimer>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

namespace tarnwick {

/// How a reading in the background is timed. Times are monotonic.
struct ReadingPace {
    std::chrono::nanoseconds period{}; ///< how long a value holds
    /// For how long after that an old value will do, so that nobody waits for the new one.
    std::chrono::nanoseconds grace{};
    std::chrono::milliseconds patience{}; ///< a reading that takes longer is slow
    bool isKnownSlow = false;             ///< slow from the start, and always
};

/// A reading that may take long, as those do that firmware answers. It is taken by ReadingThreads. Whoever asks gets
/// the last value, and waits only for one that replaces a value from long ago, and only where it is not slow. Copies
/// share the value. Any thread.
template <typename Value>
class BackgroundReading {
public:
    /// `take` is called on one thread at a time; the value is `first` before that.
    BackgroundReading(std::function<Value()> take, Value first, ReadingPace pace) : state_(std::make_shared<State>()) {
        state_->take = std::move(take);
        state_->value = std::move(first);
        state_->pace = pace;
        state_->isSlow = pace.isKnownSlow;
    }

    /// What is to be run on another thread to replace the value; absent while it holds and while it is being replaced.
    [[nodiscard]] std::optional<std::function<void()>> workDue(std::chrono::nanoseconds now) const {
        const std::lock_guard lock(state_->mutex);
        if (state_->isUnderWay || state_->isYounger(state_->pace.period, now))
            return std::nullopt;
        state_->isUnderWay = true;
        return [state = state_, now] {
            state->run(now);
        };
    }

    [[nodiscard]] bool isSlow() const {
        const std::lock_guard lock(state_->mutex);
        return state_->isSlow;
    }

    [[nodiscard]] Value value(std::chrono::nanoseconds now, QDeadlineTimer deadline) const {
        std::unique_lock lock(state_->mutex);
        const auto isDone = [this] {
            return !state_->isUnderWay;
        };
        if (!state_->isSlow && !state_->isYounger(state_->pace.period + state_->pace.grace, now))
            state_->isSlow = !state_->done.wait_for(lock, deadline.remainingTimeAsDuration(), isDone);
        return state_->value;
    }

private:
    struct State {
        std::function<Value()> take;
        ReadingPace pace;
        std::mutex mutex; ///< guards what follows
        std::condition_variable done;
        Value value;
        std::optional<std::chrono::nanoseconds> takenAt;
        bool isUnderWay = false;
        bool isSlow = false;

        [[nodiscard]] bool isYounger(std::chrono::nanoseconds age, std::chrono::nanoseconds now) const {
            return takenAt && now - *takenAt < age;
        }

        void run(std::chrono::nanoseconds now) {
            QElapsedTimer clock;
            clock.start();
            Value taken = take();
            const std::lock_guard lock(mutex);
            value = std::move(taken);
            takenAt = now;
            isSlow = pace.isKnownSlow || std::chrono::milliseconds(clock.elapsed()) > pace.patience;
            isUnderWay = false;
            done.notify_all();
        }
    };

    std::shared_ptr<State> state_;
};

} // namespace tarnwick
