#pragma once

#include "Desktop.h"

#include <QStringList>

/// What `osascript` is asked to run.
namespace tarnwick::AppleScript {

/// Its path on every Mac.
inline constexpr QStringView interpreter = u"/usr/bin/osascript";

/// The arguments that show a notification. Its texts are quoted, so that they stay texts.
[[nodiscard]] QStringList notificationArguments(const DesktopNotification& notification);
/// The arguments that run a command line in a new window of Terminal. The line is an argument of the script, and no
/// part of it.
[[nodiscard]] QStringList terminalArguments(const QString& commandLine);

} // namespace tarnwick::AppleScript
