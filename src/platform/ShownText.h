#pragma once

#include <QString>

namespace tarnwick {

/// A text from outside, fit to be shown: in a window, in a notification or on a terminal. Control characters, which a
/// terminal obeys and markup must not contain, become spaces, and so do the characters that break a line, except for
/// those in `kept`. Characters that would change the writing direction of the text beside them are left out.
[[nodiscard]] QString shownText(QStringView text, QStringView kept = {});

} // namespace tarnwick
