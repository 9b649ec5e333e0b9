#pragma once

#include <QString>

#include <array>
#include <charconv>

namespace tarnwick {

/// The number as printf's `%.<decimals>f` writes it in the C locale, whatever the program's own locale: correctly
/// rounded, half to even on the exact binary value. (QString's own conversions round a half up: 36.5 to "37".)
/// `decimals` is 0 to 40.
[[nodiscard]] inline QString fixedPoint(double value, int decimals) {
    std::array<char, 400> digits; // the largest double has 309 digits before the point
    const auto [end, error] =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed, decimals);
    return QString::fromLatin1(digits.data(), end - digits.data());
}

} // namespace tarnwick
