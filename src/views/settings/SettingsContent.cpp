#include "SettingsContent.h"

#include "FixedPoint.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

SettingsContent settingsContent(const AppSettings& settings) {
    return {.showMenuBarLabel = settings.showMenuBarLabel,
            .refreshInterval = static_cast<double>(settings.refreshIntervalSeconds),
            .refreshIntervalText = QString::number(settings.refreshIntervalSeconds) + u" seconds"_s,
            .diskThreshold = settings.alertDiskThresholdPercent,
            .diskThresholdText = fixedPoint(settings.alertDiskThresholdPercent, 0) + u'%',
            .soundAlerts = settings.soundAlerts};
}

} // namespace tarnwick
