#pragma once

#include "ContainerInfo.h"
#include "Server.h"

#include <QString>
#include <QStringView>

namespace tarnwick {

/// Opens interactive shells in a terminal window. Main thread; returns at once; failures are seen in the terminal only.
namespace TerminalLauncher {

/// Runs one shell command line in a new terminal window.
void openInTerminal(const QString& command);
/// A login on the server; for the local one, a shell here.
void openServerSSH(const Server& server);
/// A shell inside one of the server's containers.
void openDockerContainer(const Server& server, const ContainerInfo& container);

/// The command lines of the two above. Harmless values stand plain; a value with shell characters is quoted so that it
/// cannot leave its place, at both levels where a remote command is nested.
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
