#include "AppleScript.h"
#include "Desktop.h"
#include "FoundationReadings.h"
#include "ProcessRunner.h"

namespace tarnwick::Desktop {

void post(const DesktopNotification& notification) {
    ProcessRunner::startDetached(AppleScript::interpreter.toString(), AppleScript::notificationArguments(notification));
}

void openTerminal(const QString& commandLine) {
    ProcessRunner::startDetached(AppleScript::interpreter.toString(), AppleScript::terminalArguments(commandLine));
}

std::optional<QString> computerName() {
    return FoundationReadings::computerName();
}

} // namespace tarnwick::Desktop
