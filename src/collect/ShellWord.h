#pragma once

#include <QString>

namespace tarnwick {

/// Text from outside in the command lines of a shell, whichever that is. Pure.
namespace ShellWord {

/// Whether no shell reads more into the value than its characters, so that it needs no quotes.
[[nodiscard]] bool isPlain(const QString& value);
/// The value as one word, in quotes. Control characters become "?": they would act as keystrokes where the line is
/// typed and as commands to the terminal where it is printed, and no valid value has one.
[[nodiscard]] QString quoted(const QString& value);
/// The value as one operand of a command, which does not read it as an option; without quotes where it is plain.
[[nodiscard]] QString operand(const QString& value);

} // namespace ShellWord

} // namespace tarnwick
