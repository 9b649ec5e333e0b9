#pragma once

#include "SSHAlias.h"
#include "SSHMetricsCollector.h"
#include "Server.h"
#include "ThisComputer.h"

#include <QFuture>
#include <QUrl>

#include <functional>

namespace tarnwick {

/// What the views work with besides the store and the UI state.
struct ViewCollaborators {
    ThisComputer& computer;
    std::function<QFuture<std::optional<QString>>(const Server&, const QString& containerId, ContainerAction)>
        changeContainer = {};
    std::function<void(const Server&)> openServerSSH = {};
    std::function<void(const Server&, const ContainerInfo&)> openDockerContainer = {};
    std::function<void(const Server&, const ContainerInfo&)> openContainerLog = {};
    std::function<void(const QUrl&)> openAddress = {};
    std::function<QList<SSHConfigHost>()> sshHosts = {};
    /// Whether the ssh configuration includes files whose hosts are not listed.
    std::function<bool()> sshConfigIncludes = {};
    std::function<QFuture<SSHAliasMeaning>(const SSHConfigHost&)> askAlias = {};
    /// Whether the session starts the program.
    std::function<bool()> startsAtLogin = {};
    std::function<void(bool)> setStartsAtLogin = {};

    [[nodiscard]] static ViewCollaborators real(ThisComputer& computer);
};

} // namespace tarnwick
