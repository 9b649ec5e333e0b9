#pragma once

#include "Desktop.h"
#include "Instant.h"

#include <QHash>
#include <QString>

#include <functional>

namespace tarnwick {

/// Posts alerts and keeps the same alert from repeating within five minutes. Main thread only.
namespace NotificationService {

/// Posts unless the same key was posted less than 300 seconds before `now`. The key counts as posted even if
/// the desktop does not show it. Times are kept until the process ends.
void sendAlert(const QString& title, const QString& message, const QString& key, bool withSound,
               Instant now = Instant::now(),
               const std::function<void(const DesktopNotification&)>& post = Desktop::post);

/// The notification that sendAlert() posts.
[[nodiscard]] DesktopNotification notification(const QString& title, const QString& message, bool withSound);
/// The AppleScript line that posts this notification on macOS, for `osascript -e`. Only double quotes are escaped.
[[nodiscard]] QString appleScriptLine(const QString& title, const QString& message, bool withSound);

} // namespace NotificationService

} // namespace tarnwick
