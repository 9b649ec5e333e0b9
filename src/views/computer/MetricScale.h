#pragma once

#include "controls/ColorRole.h"

namespace tarnwick::MetricScale {

/// The colour of a load figure: red from 85 %, orange from 65 %, else green.
[[nodiscard]] constexpr ColorRole::Role loadRole(double percent) {
    if (percent >= 85)
        return ColorRole::Role::Red;
    return percent >= 65 ? ColorRole::Role::Orange : ColorRole::Role::Green;
}

/// The colour of a temperature: green below 55 °C, orange below 75 °C, else red.
[[nodiscard]] constexpr ColorRole::Role temperatureRole(double celsius) {
    if (celsius < 55)
        return ColorRole::Role::Green;
    return celsius < 75 ? ColorRole::Role::Orange : ColorRole::Role::Red;
}

} // namespace tarnwick::MetricScale
