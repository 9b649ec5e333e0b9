#pragma once

#include <QFuture>
#include <QPromise>

#include <utility>

/// A future that already has its result. Qt's own function for it has another name since 6.6.
template <typename Value>
[[nodiscard]] QFuture<Value> readyFuture(Value value) {
    QPromise<Value> promise;
    promise.start();
    promise.addResult(std::move(value));
    promise.finish();
    return promise.future();
}
