#include "FleetTrends.h"

#include <QSet>

namespace tarnwick {

void FleetTrends::follow(const QList<Server>& servers) {
    QSet<QUuid> listed;
    listed.reserve(servers.size());
    for (const Server& server : servers) {
        if (listed.contains(server.id))
            continue; // of rows that share an id only the first one is probed
        listed.insert(server.id);
        note(server);
    }
    std::erase_if(trends_, [&listed](const auto& entry) { return !listed.contains(entry.first); });
}

void FleetTrends::note(const Server& server) {
    if (server.metrics)
        trends_[server.id].note(*server.metrics);
}

const ServerTrend* FleetTrends::trend(const QUuid& id) const {
    const auto found = trends_.find(id);
    return found == trends_.end() ? nullptr : &found->second;
}

} // namespace tarnwick
