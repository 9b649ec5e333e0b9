#pragma once

#include "Desktop.h"
#include "Instant.h"

#include <QHash>
#include <QString>

namespace tarnwick {

/// Keeps the same alert from repeating within five minutes, and words its notification. Main thread only.
namespace NotificationService {

/// Whether an alert may be posted now: not when one of the same key was less than 300 seconds before `now`. If it may,
/// it counts as posted, even if the desktop does not show it. Times are kept until the process ends.
[[nodiscard]] bool claim(const QString& key, Instant now);

/// The notification of an alert.
[[nodiscard]] DesktopNotification notification(const QString& title, const QString& message, bool withSound);

} // namespace NotificationService

} // namespace tarnwick
