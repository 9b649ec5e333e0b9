#pragma once

#include <QString>

namespace tarnwick {

/// A text from outside, fit for one or two lines of a view: at most 300 characters, cut at a whole one and then ended
/// with "…"; line breaks, tabs and other control characters are spaces; characters that would turn the direction of
/// what stands beside them are left out.
[[nodiscard]] QString displayText(const QString& text);

} // namespace tarnwick
