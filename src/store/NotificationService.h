#pragma once

#include "Desktop.h"
#include "Instant.h"

#include <QHash>
#include <QString>

#include <functional>

namespace tarnwick {

/// Posts alerts and keeps the same alert from repeating within five minutes. Main thread only.
namespace NotificationService {

/// Posts unless the same key was posted less than 300 seconds before `now`. The key counts as posted whether or not
/// the desktop shows it. The memory lasts as long as the process.
void sendAlert(const QString& title, const QString& message, const QString& key, bool withSound,
               Instant now = Instant::now(),
               const std::function<void(const DesktopNotification&)>& post = Desktop::post);

/// What sendAlert() hands to the desktop.
[[nodiscard]] DesktopNotification notification(const QString& title, const QString& message, bool withSound);
/// The line that macOS's `osascript -e` posts a notification with; double quotes escaped, nothing else.
[[nodiscard]] QString appleScriptLine(const QString& title, const QString& message, bool withSound);

} // namespace NotificationService

} // namespace tarnwick
