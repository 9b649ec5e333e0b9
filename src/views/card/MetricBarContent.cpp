#include "MetricBarContent.h"

#include <algorithm>

namespace tarnwick {

namespace {
constexpr double criticalPercent = 90;
constexpr double warningPercent = 80;

ColorRole::Role fillRole(double percent) {
    if (percent >= criticalPercent)
        return ColorRole::Role::Red;
    return percent >= warningPercent ? ColorRole::Role::Orange : ColorRole::Role::Blue;
}
} // namespace

MetricBarContent metricBarContent(const QString& label, double percent, const QString& detail,
                                  const TrendContent& trend) {
    return {label, detail, std::clamp(percent / 100, 0.0, 1.0), fillRole(percent), trend};
}

} // namespace tarnwick
