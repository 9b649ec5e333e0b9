#pragma once

#include <QFuture>
#include <QPromise>

#include <utility>

/// A future that has its result already. Qt has a function for it, under one name up to 6.5 and another one since.
template <typename Value>
[[nodiscard]] QFuture<Value> readyFuture(Value value) {
    QPromise<Value> promise;
    promise.start();
    promise.addResult(std::move(value));
    promise.finish();
    return promise.future();
}
