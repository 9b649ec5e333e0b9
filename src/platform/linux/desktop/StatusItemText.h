#pragma once

#include <QString>

namespace tarnwick {

/// The widest text of the same shape: room for it is room for every value the digits can take.
[[nodiscard]] inline QString statusTextGuide(QString text) {
    for (QChar& character : text)
        if (character.isDigit())
            character = u'0';
    return text;
}

} // namespace tarnwick
