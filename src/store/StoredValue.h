#pragma once

#include "Decoded.h"
#include "Merge.h"
#include "StoredFile.h"

#include <QByteArray>

#include <optional>
#include <utility>

namespace tarnwick {

/// A value in a file that other processes may write, too. Any thread, one at a time.
template <typename Value>
class StoredValue {
public:
    using Decode = Decoded<Value> (*)(const QByteArray& json);
    using Encode = std::optional<QByteArray> (*)(const Value& value);

    StoredValue(const QString& path, Decode decode, Encode encode) : file_(path), decode_(decode), encode_(encode) {}

    /// What is stored, when it can be decoded and is not what was read or written last.
    [[nodiscard]] std::optional<Value> readNews() {
        auto json = file_.read();
        holdsContent_ = json && json == content_;
        if (!json || holdsContent_)
            return std::nullopt;
        auto decoded = decode_(*json);
        auto* const value = std::get_if<Value>(&decoded);
        if (!value) {
            file_.reject();
            return std::nullopt;
        }
        content_ = std::move(json);
        holdsContent_ = true;
        return std::move(*value);
    }

    /// Merges what others have written since into `value`. False when there is nothing.
    bool takeIn(Value& value) {
        const std::optional<QByteArray> before = content_;
        const auto theirs = readNews();
        if (!theirs)
            return false;
        const Decoded<Value> base = before ? decode_(*before) : Value();
        value = merged(std::get<Value>(base), value, *theirs);
        return true;
    }

    /// Call after takeIn(): what others have written since is lost. Writes nothing when the file holds the value. False
    /// when it failed.
    bool write(const Value& value, Instant now) {
        auto json = encode_(value);
        if (!json || (!(holdsContent_ && json == content_) && !file_.write(*json, now)))
            return false;
        content_ = std::move(json);
        return true;
    }

    void removeLeftovers() const { file_.removeLeftovers(); }

private:
    StoredFile file_;
    Decode decode_;
    Encode encode_;
    std::optional<QByteArray> content_; ///< as this process read or wrote it last
    bool holdsContent_ = false;         ///< whether the file held that when it was last looked at
};

} // namespace tarnwick
