#pragma once

#include "OpenSshServer.h"
#include "Server.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace tarnwick {

/// This computer, and entries for real ssh servers on it.
class Fleet {
public:
    /// Adds `count` entries for a server that runs `command` instead of the probe, or the probe when it is empty. Says
    /// what is missing; empty when nothing is.
    [[nodiscard]] QString add(const QString& name, int count, QStringView command = {});
    /// Adds a host that is well, one that hangs and one that refuses.
    [[nodiscard]] QString start();
    /// The list, this computer first.
    [[nodiscard]] QList<Server> servers() const { return servers_; }

    static constexpr qint64 closedPort = 9; ///< of this computer: nothing listens on the discard port
    /// An entry for user and port on this computer.
    [[nodiscard]] static Server server(const QString& name, qint64 port);
    /// The variables that Subject::start() needs for the display and bus of this process.
    [[nodiscard]] static QStringList displayVariables();

private:
    std::vector<std::unique_ptr<OpenSshServer>> hosts_;
    QList<Server> servers_{[] {
        Server local = server(QStringLiteral("this computer"), 22);
        local.isLocal = true;
        return local;
    }()};
};

} // namespace tarnwick
