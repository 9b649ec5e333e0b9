#pragma once

#include <QObject>

#include <functional>
#include <utility>

namespace tarnwick {

/// Runs a task once when the event loop gets to it, however often it was requested until then: many changes in one turn
/// of the loop cost one update. A request made while the task runs is for the next turn. Main thread.
class OncePerTurn {
public:
    /// Must live as long as `context`: usually it is a member of it. The task does not run after `context` is gone.
    OncePerTurn(QObject* context, std::function<void()> task) : context_(context), task_(std::move(task)) {}
    OncePerTurn(const OncePerTurn&) = delete;
    OncePerTurn& operator=(const OncePerTurn&) = delete;

    void request() {
        if (std::exchange(isPending_, true))
            return;
        QMetaObject::invokeMethod(
            context_,
            [this] {
                isPending_ = false;
                task_();
            },
            Qt::QueuedConnection);
    }

private:
    QObject* context_;
    std::function<void()> task_;
    bool isPending_ = false;
};

} // namespace tarnwick
