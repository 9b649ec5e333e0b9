#include "SettingsContent.h"

#include "FixedPoint.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace tarnwick {

double SliderRange::nearestStop(double value) const {
    return std::clamp(from + std::round((value - from) / step) * step, from, to);
}

SettingsContent settingsContent(const AppSettings& settings) {
    return {.showMenuBarLabel = settings.showMenuBarLabel,
            .refreshInterval = static_cast<double>(settings.refreshIntervalSeconds),
            .refreshIntervalText = QString::number(settings.refreshIntervalSeconds) + u" seconds"_s,
            .diskThreshold = settings.alertDiskThresholdPercent,
            .diskThresholdText = fixedPoint(settings.alertDiskThresholdPercent, 0) + u'%',
            .soundAlerts = settings.soundAlerts};
}

} // namespace tarnwick
