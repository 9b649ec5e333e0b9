#include "AliasMeanings.h"

#include <utility>

namespace tarnwick {

AliasMeanings::AliasMeanings(Ask ask, QObject* parent) : QObject(parent), ask_(std::move(ask)) {
    connect(&answer_, &QFutureWatcherBase::finished, this, &AliasMeanings::hear);
}

void AliasMeanings::want(const SSHConfigHost& host) {
    if (known_.contains(host) || SSHAlias::name(host).isEmpty())
        return;
    known_.insert(host, {});
    waiting_.append(host);
    if (!asked_)
        askNext();
}

void AliasMeanings::forget() {
    known_.clear();
    waiting_.clear();
    asked_.reset();
    answer_.setFuture({});
}

void AliasMeanings::askNext() {
    asked_ = waiting_.takeLast();
    answer_.setFuture(ask_(*asked_));
}

void AliasMeanings::hear() {
    if (!asked_ || answer_.future().resultCount() == 0)
        return; // forgotten, or the application ends
    const SSHConfigHost host = *std::exchange(asked_, std::nullopt);
    known_.insert(host, answer_.result());
    if (!waiting_.isEmpty())
        askNext();
    Q_EMIT found(host);
}

} // namespace tarnwick
