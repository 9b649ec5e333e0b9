#pragma once

#include "Server.h"
#include "ServerTrend.h"

#include <map>

namespace tarnwick {

/// The trends of a fleet, by the ids of its servers.
class FleetTrends {
public:
    /// Notes the latest result of each server, and forgets those that are gone.
    void follow(const QList<Server>& servers);
    /// Notes the server's latest result, if it has one.
    void note(const Server& server);
    /// Null while there is no result. Valid until the next call.
    [[nodiscard]] const ServerTrend* trend(const QUuid& id) const;

private:
    std::map<QUuid, ServerTrend> trends_;
};

} // namespace tarnwick
