#pragma once

#include "ContainerInfo.h"
#include "Server.h"

#include <QString>

namespace tarnwick {

/// Opens shells and logs in a terminal window. Main thread; returns at once; a failure shows in the terminal alone.
namespace TerminalLauncher {

/// Runs one shell command line in a new terminal window.
void openInTerminal(const QString& command);
/// A login on the server; for the local one, a shell here.
void openServerSSH(const Server& server);
/// A shell inside one of the server's containers.
void openDockerContainer(const Server& server, const ContainerInfo& container);
/// The end of a container's log.
void openContainerLog(const Server& server, const ContainerInfo& container);

/// The command lines of the three above. A value with shell characters is quoted, so that no shell runs a part of it:
/// the local one, nor the remote one that gets a nested command.
[[nodiscard]] QString serverCommandLine(const Server& server);
[[nodiscard]] QString containerCommandLine(const Server& server, const ContainerInfo& container);
[[nodiscard]] QString containerLogCommandLine(const Server& server, const ContainerInfo& container);

} // namespace TerminalLauncher

} // namespace tarnwick
