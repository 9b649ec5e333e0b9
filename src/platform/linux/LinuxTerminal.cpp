#include "LinuxTerminal.h"

#include "Desktop.h"
#include "ProcessRunner.h"

#include <QStandardPaths>

#include <array>

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// A terminal emulator, and the arguments before the argument vector that it runs.
struct Terminal {
    QStringView name;
    std::array<QStringView, 2> options;
};
/// First the user's and the system's own choice, then the desktops' terminals, then the others.
constexpr std::array terminals{
    Terminal{u"xdg-terminal-exec", {}},
    Terminal{u"x-terminal-emulator", {u"-e"}},
    Terminal{u"gnome-terminal", {u"--"}},
    Terminal{u"kgx", {u"--"}},
    Terminal{u"ptyxis", {u"--new-window", u"--"}},
    Terminal{u"konsole", {u"-e"}},
    Terminal{u"xfce4-terminal", {u"-x"}},
    Terminal{u"mate-terminal", {u"-x"}},
    Terminal{u"terminator", {u"-x"}},
    Terminal{u"kitty", {}},
    Terminal{u"alacritty", {u"-e"}},
    Terminal{u"foot", {}},
    Terminal{u"wezterm", {u"start", u"--"}},
    Terminal{u"ghostty", {u"-e"}},
    Terminal{u"urxvt", {u"-e"}},
    Terminal{u"xterm", {u"-e"}},
};

// sh runs the line whatever the user's shell is, because others quote differently. It is a shell of its own, so that
// neither a syntax error nor an interrupt ends the one that stays open.
constexpr QStringView keepOpen = u"trap : INT QUIT; /bin/sh -c \"$1\"; exec \"${SHELL:-/bin/sh}\"";

} // namespace

std::optional<TerminalCommand> terminalCommand(const QString& commandLine,
                                               const std::function<QString(const QString&)>& find) {
    for (const Terminal& terminal : terminals) {
        const QString executable = find(terminal.name.toString());
        if (executable.isEmpty())
            continue;
        QStringList arguments;
        for (const QStringView option : terminal.options)
            if (!option.isEmpty())
                arguments += option.toString();
        arguments += {u"/bin/sh"_s, u"-c"_s, keepOpen.toString(), u"sh"_s, commandLine};
        return TerminalCommand{executable, arguments};
    }
    return std::nullopt;
}

void Desktop::openTerminal(const QString& commandLine) {
    const auto command =
        terminalCommand(commandLine, [](const QString& name) { return QStandardPaths::findExecutable(name); });
    if (command)
        ProcessRunner::startDetached(command->executable, command->arguments);
}

} // namespace tarnwick
