#pragma once

#include "BackgroundThreads.h"

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
    /// For how long after that an old value will do, so that nobody waits for the new one: more than a second, so that
    /// who asks every second never waits.
    std::chrono::nanoseconds grace{2'000'000'000};
    std::chrono::milliseconds patience{5}; ///< a reading that takes longer is slow
    bool isKnownSlow = false;              ///< slow from the start, and always
    /// A reading that takes longer hangs: its last value has nothing to do with the present.
    std::chrono::nanoseconds longest{30'000'000'000};
};

/// A reading that may take long, as those do that firmware answers, or hang. It is taken by BackgroundThreads, once at
/// a time: while it hangs it holds one thread. Whoever asks gets the last value, and waits only for one that replaces a
/// value from long ago, and only where it is not slow. Copies share the value. Any thread.
template <typename Value>
class BackgroundReading {
public:
    /// `take` is called on one thread at a time; the value is `first` before that, and while it hangs.
    BackgroundReading(std::function<Value()> take, Value first, ReadingPace pace) : state_(std::make_shared<State>()) {
        state_->take = std::move(take);
        state_->value = first;
        state_->first = std::move(first);
        state_->pace = pace;
        state_->isSlow = pace.isKnownSlow;
    }

    /// The value for who does not wait. It is taken by one of `threads`, if it is due; they do nothing else that hangs.
    [[nodiscard]] Value ask(BackgroundThreads& threads, std::chrono::nanoseconds now) const {
        if (std::optional<std::function<void()>> work = workDue(now))
            threads.run({*std::move(work)});
        return value(now, QDeadlineTimer(state_->pace.patience));
    }

    /// The value for who can wait as long as it takes: taken in this thread, unless another one is taking it.
    [[nodiscard]] Value wait(std::chrono::nanoseconds now) const {
        if (std::optional<std::function<void()>> work = workDue(now))
            (*std::exchange(work, std::nullopt))();
        std::unique_lock lock(state_->mutex);
        state_->done.wait(lock, [this] { return !state_->begunAt; });
        return state_->value;
    }

    /// What is to be run on another thread to replace the value; absent while it holds and while it is being replaced.
    /// If it is dropped instead, the value is due again.
    [[nodiscard]] std::optional<std::function<void()>> workDue(std::chrono::nanoseconds now) const {
        const std::lock_guard lock(state_->mutex);
        if (state_->begunAt || state_->isYounger(state_->pace.period, now))
            return std::nullopt;
        state_->begunAt = now;
        return [turn = std::make_shared<Turn>(state_), now] {
            turn->state->run(now);
        };
    }

    [[nodiscard]] bool isSlow() const {
        const std::lock_guard lock(state_->mutex);
        return state_->isSlow;
    }

    [[nodiscard]] Value value(std::chrono::nanoseconds now, QDeadlineTimer deadline) const {
        std::unique_lock lock(state_->mutex);
        const auto isDone = [this] {
            return !state_->begunAt;
        };
        if (!state_->isSlow && !state_->isYounger(state_->pace.period + state_->pace.grace, now))
            state_->isSlow = !state_->done.wait_for(lock, deadline.remainingTimeAsDuration(), isDone);
        const bool hangs = state_->begunAt && now - *state_->begunAt > state_->pace.longest;
        return hangs ? state_->first : state_->value;
    }

private:
    struct State {
        std::function<Value()> take;
        Value first;
        ReadingPace pace;
        std::mutex mutex; ///< guards what follows
        std::condition_variable done;
        Value value;
        std::optional<std::chrono::nanoseconds> takenAt;
        std::optional<std::chrono::nanoseconds> begunAt; ///< while it is being replaced
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
        }
    };

    /// Held by the work: it ends with it, whether that was run or dropped.
    struct Turn {
        explicit Turn(std::shared_ptr<State> its) : state(std::move(its)) {}
        ~Turn() {
            const std::lock_guard lock(state->mutex);
            state->begunAt.reset();
            state->done.notify_all();
        }
        Q_DISABLE_COPY_MOVE(Turn)
        const std::shared_ptr<State> state;
    };

    std::shared_ptr<State> state_;
};

} // namespace tarnwick
