#include "Merge.h"

#include "StoredFields.h"

#include <QHash>

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

namespace tarnwick {

namespace {

template <typename T>
const T& mergedField(const T& base, const T& ours, const T& theirs) {
    return ours == base ? theirs : ours;
}

using Metrics = std::optional<ServerMetrics>;

const Metrics& mergedField(const Metrics& base, const Metrics& ours, const Metrics& theirs) {
    const bool areTheirsLater = ours && theirs && theirs->lastChecked.secondsSince(ours->lastChecked) > 0;
    return ours == base || (theirs != base && areTheirsLater) ? theirs : ours;
}

template <typename Record, typename... Fields>
Record mergedRecord(const Record& base, Record ours, const Record& theirs, const std::tuple<Fields...>& fields) {
    const auto merge = [&](auto member) {
        ours.*member = mergedField(base.*member, ours.*member, theirs.*member);
    };
    std::apply([&](const auto&... field) { (merge(field.member), ...); }, fields);
    return ours;
}

/// A list of servers by key: the id, and how many rows before have the same.
class Rows {
public:
    using Key = std::pair<QUuid, int>;

    explicit Rows(const QList<Server>& servers) {
        QHash<QUuid, int> counts;
        for (const Server& server : servers) {
            keys_.append({server.id, counts[server.id]++});
            servers_.insert(keys_.last(), &server);
        }
    }
    [[nodiscard]] const QList<Key>& keys() const { return keys_; }
    /// Null when there is none.
    [[nodiscard]] const Server* server(const Key& key) const { return servers_.value(key); }
    /// The keys that `other` has, too, in the order of this list.
    [[nodiscard]] QList<Key> keysIn(const Rows& other) const {
        QList<Key> common;
        std::ranges::copy_if(keys_, std::back_inserter(common), [&](const Key& key) { return other.server(key); });
        return common;
    }

private:
    QList<Key> keys_;
    QHash<Key, const Server*> servers_;
};

/// Whether the row of one side stays although the other side lacks it.
bool isKept(const Server* base, const Server& row) {
    if (!base)
        return true;
    Server edited = row;
    edited.metrics = base->metrics;
    return edited != *base;
}

} // namespace

QList<Server> merged(const QList<Server>& base, const QList<Server>& ours, const QList<Server>& theirs) {
    const Rows baseRows(base);
    const Rows ourRows(ours);
    const Rows theirRows(theirs);
    const bool isOurOrderAsBefore = ourRows.keysIn(baseRows) == baseRows.keysIn(ourRows);
    const Rows& first = isOurOrderAsBefore ? theirRows : ourRows;
    const Rows& second = isOurOrderAsBefore ? ourRows : theirRows;
    QList<Rows::Key> keys = first.keys();
    std::ranges::copy_if(second.keys(), std::back_inserter(keys),
                         [&first](const Rows::Key& key) { return !first.server(key); });
    QList<Server> result;
    for (const Rows::Key& key : std::as_const(keys)) {
        const Server* before = baseRows.server(key);
        const Server* our = ourRows.server(key);
        const Server* their = theirRows.server(key);
        if (our && their)
            result.append(mergedRecord(before ? *before : Server(), *our, *their, serverFields));
        else if (const Server& only = our ? *our : *their; isKept(before, only))
            result.append(only);
    }
    return result;
}

AppSettings merged(const AppSettings& base, const AppSettings& ours, const AppSettings& theirs) {
    return mergedRecord(base, ours, theirs, settingsFields);
}

} // namespace tarnwick
