#pragma once

#include "ContainerInfo.h"
#include "Server.h"

#include <QString>
#include <QStringView>

namespace tarnwick {

/// Opens interactive shells in a terminal window. Main thread; returns at once; a failure shows in the terminal alone.
namespace TerminalLauncher {

/// Runs one shell command line in a new terminal window.
void openInTerminal(const QString& command);
/// A login on the server; for the local one, a shell here.
void openServerSSH(const Server& server);
/// A shell inside one of the server's containers.
void openDockerContainer(const Server& server, const ContainerInfo& container);

/// The command lines of the two above. A value with shell characters is quoted, so that no shell runs a part of it: the
/// local one, nor the remote one that gets a nested command.
[[nodiscard]] QString serverCommandLine(const Server& server);
[[nodiscard]] QString containerCommandLine(const Server& server, const ContainerInfo& container);

/// The script that macOS's `osascript -e` runs, with the command line as its argument.
inline constexpr QStringView appleScript = u"on run argv\n"
                                           "    set cmd to item 1 of argv\n"
                                           "    tell application \"Terminal\"\n"
                                           "        activate\n"
                                           "        do script cmd\n"
                                           "    end tell\n"
                                           "end run";

} // namespace TerminalLauncher

} // namespace tarnwick
