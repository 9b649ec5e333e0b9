#pragma once

#include "AppSettings.h"
#include "Server.h"
#include "StoreCollaborators.h"

#include <QList>
#include <QStringList>

namespace tarnwick {

/// The alerts of one refresh. A network that fails must not flood the desktop. Main thread only.
class AlertRound {
public:
    /// Both must outlive it. The settings count as they are when a result comes.
    AlertRound(const StoreCollaborators& collaborators, const AppSettings& settings)
        : collaborators_(collaborators), settings_(settings) {}

    /// Posts what a server's new metrics raise. After the third alert the rest waits for end().
    void post(const Server& server);
    /// The same, but a failure waits, too, while it may be this computer that has no way out of its own networks.
    void postOrHold(const Server& server);
    /// Posts what waits; alerts after the third as one that names their servers. True when this computer is offline: it
    /// has no default route, and of the remote servers, one or more, all have failed. That raises no alerts.
    bool end();

private:
    const StoreCollaborators& collaborators_;
    const AppSettings& settings_;
    bool remoteFailed_ = false;
    bool remoteAnswered_ = false;
    QList<Server> held_;
    int posted_ = 0;
    QStringList others_; ///< names of servers whose alerts come after the third
};

} // namespace tarnwick
