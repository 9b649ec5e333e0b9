#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace tarnwick {

/// A program and its arguments.
struct TerminalCommand {
    QString executable; ///< absolute path
    QStringList arguments;
};

/// How to open a window that runs one line of POSIX shell and then, however the line ended, the user's interactive
/// shell. `find` gives a program's absolute path, or an empty string. Absent when no known terminal is installed.
[[nodiscard]] std::optional<TerminalCommand> terminalCommand(const QString& commandLine,
                                                             const std::function<QString(const QString&)>& find);

} // namespace tarnwick
