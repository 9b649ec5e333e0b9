#include "AliasMeanings.h"

#include <utility>

using namespace std::chrono_literals;

namespace tarnwick {

AliasMeanings::AliasMeanings(Ask ask, QObject* parent) : QObject(parent), ask_(std::move(ask)) {
    connect(&answer_, &QFutureWatcherBase::finished, this, &AliasMeanings::hear);
    pause_.setSingleShot(true);
    pause_.setInterval(100ms);
    pause_.callOnTimeout(this, &AliasMeanings::found);
}

SSHAliasMeaning AliasMeanings::meaning(const SSHConfigHost& host) {
    if (const auto known = known_.constFind(host); known != known_.cend())
        return *known;
    if (!SSHAlias::name(host).isEmpty()) {
        known_.insert(host, {});
        questions_.append(host);
        if (questions_.size() == 1)
            askNext();
    }
    return {};
}

void AliasMeanings::forget() {
    known_.clear();
    questions_.clear();
    pause_.stop();
    answer_.setFuture({});
}

void AliasMeanings::askNext() {
    answer_.setFuture(ask_(questions_.constFirst()));
}

void AliasMeanings::hear() {
    if (questions_.isEmpty() || answer_.future().resultCount() == 0)
        return; // forgotten, or the application ends
    const SSHAliasMeaning meaning = answer_.result();
    known_.insert(questions_.takeFirst(), meaning);
    if (meaning.lost != SSHAliasMeaning::Lost::nothing && !pause_.isActive())
        pause_.start();
    if (!questions_.isEmpty())
        askNext();
}

} // namespace tarnwick
