#pragma once

#include "SSHConfigParser.h"
#include "ServerListModel.h"

#include <QFuture>
#include <QUrl>

#include <functional>

class QQmlEngine;

namespace tarnwick {

/// What the views work with besides the store and the UI state; the defaults are the real ones.
struct ViewCollaborators {
    ThisComputer& computer;
    std::function<QFuture<bool>(const Server&, const QString& containerId)> restartContainer = {};
    std::function<void(const Server&)> openServerSSH = {};
    std::function<void(const Server&, const ContainerInfo&)> openDockerContainer = {};
    std::function<void(const QUrl&)> openAddress = {};
    std::function<QList<SSHConfigHost>()> sshHosts = {};

    [[nodiscard]] static ViewCollaborators real(ThisComputer& computer);
};

/// Lets the models that QML makes in this engine find the computer.
void setComputer(QQmlEngine& engine, ThisComputer& computer);
/// The computer of the engine that made `model`.
[[nodiscard]] ThisComputer& computerOf(const QObject& model);

} // namespace tarnwick
