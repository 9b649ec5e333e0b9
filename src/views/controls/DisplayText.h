#pragma once

#include <QString>

namespace tarnwick {

/// A text from outside, made fit for one or two lines of a view: shownText() of at most 300 characters. A longer one is
/// cut between two characters and ends with "…".
[[nodiscard]] QString displayText(const QString& text);

} // namespace tarnwick
