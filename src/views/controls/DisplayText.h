#pragma once

#include <QString>

namespace tarnwick {

/// A text from outside, made fit for one or two lines of a view. It has at most 300 characters; a longer one is cut
/// between two characters and ends with "…". Line breaks, tabs and other control characters become spaces. Characters
/// that would change the writing direction of the text beside them are left out.
[[nodiscard]] QString displayText(const QString& text);

} // namespace tarnwick
