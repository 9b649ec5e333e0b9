#include "AppleScript.h"

#include "ShownText.h"

using namespace Qt::StringLiterals;

namespace tarnwick::AppleScript {

namespace {

constexpr QStringView runInTerminal = u"on run argv\n"
                                      "    set cmd to item 1 of argv\n"
                                      "    tell application \"Terminal\"\n"
                                      "        activate\n"
                                      "        do script cmd\n"
                                      "    end tell\n"
                                      "end run";

/// The text as a literal. A backslash before a quote would end it, and what follows in the text would be run.
QString quoted(QString text) {
    return u'"' + text.replace(u'\\', u"\\\\"_s).replace(u'"', u"\\\""_s) + u'"';
}

} // namespace

QStringList notificationArguments(const DesktopNotification& notification) {
    const QString line = u"display notification "_s + quoted(shownText(notification.body, u"\n")) + u" with title "_s +
                         quoted(notification.title) + u" subtitle "_s + quoted(shownText(notification.subtitle));
    return {u"-e"_s, notification.soundName ? line + u" sound name "_s + quoted(*notification.soundName) : line};
}

QStringList terminalArguments(const QString& commandLine) {
    return {u"-e"_s, runInTerminal.toString(), commandLine};
}

} // namespace tarnwick::AppleScript
