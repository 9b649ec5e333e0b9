#pragma once

#include "controls/ColorRole.h"

#include <optional>

/// The colours of figures; gray for one that this computer cannot give.
namespace tarnwick::MetricScale {

/// A load: red from 85 %, orange from 65 %, else green.
[[nodiscard]] constexpr ColorRole::Role loadRole(std::optional<double> percent) {
    if (!percent)
        return ColorRole::Role::Gray;
    if (*percent >= 85)
        return ColorRole::Role::Red;
    return *percent >= 65 ? ColorRole::Role::Orange : ColorRole::Role::Green;
}

/// A temperature: green below 55 °C, orange below 75 °C, else red.
[[nodiscard]] constexpr ColorRole::Role temperatureRole(std::optional<double> celsius) {
    if (!celsius)
        return ColorRole::Role::Gray;
    if (*celsius < 55)
        return ColorRole::Role::Green;
    return *celsius < 75 ? ColorRole::Role::Orange : ColorRole::Role::Red;
}

} // namespace tarnwick::MetricScale
