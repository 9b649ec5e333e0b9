#pragma once

#include <QtQmlIntegration>

#include <algorithm>
#include <cmath>

namespace tarnwick {

/// The stops of a slider: from `from` to `to` in steps of `step`.
struct SliderRange {
    Q_GADGET
    QML_VALUE_TYPE(sliderRange)
    Q_PROPERTY(double from MEMBER from)
    Q_PROPERTY(double to MEMBER to)
    Q_PROPERTY(double step MEMBER step)

public:
    double from;
    double to;
    double step;

    /// The stop that is nearest to `value`.
    [[nodiscard]] double nearestStop(double value) const {
        return std::clamp(from + std::round((value - from) / step) * step, from, to);
    }
};

} // namespace tarnwick
