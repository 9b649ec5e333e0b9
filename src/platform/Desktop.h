#pragma once

#include <QString>

#include <optional>

namespace tarnwick {

struct DesktopNotification {
    QString title;                    ///< the product's name
    QString subtitle;                 ///< the alert's title
    QString body;                     ///< plain text; what the notification service would read as markup is quoted here
    std::optional<QString> soundName; ///< absent: silent
};

/// Requests to the user's desktop. Main thread only. Nothing here waits or reports failure: where the service is
/// missing, nothing happens.
namespace Desktop {

/// Shows a notification through the session's notification service.
void post(const DesktopNotification& notification);
/// Runs one command line in a shell in a new terminal window, which stays open afterwards.
void openTerminal(const QString& commandLine);
/// The computer's user-visible name; absent when the system has none.
[[nodiscard]] std::optional<QString> computerName();

} // namespace Desktop

} // namespace tarnwick
