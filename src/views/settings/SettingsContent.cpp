#include "SettingsContent.h"

#include "FixedPoint.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

SettingsWords settingsWords(const SystemWords& words) {
    return {.pins = u"%1 Display"_s.arg(words.barTitle),
            .pinsGuide = u"Select any items to pin simultaneously to the %1:"_s.arg(words.systemBar),
            .label = u"Show text label next to %1 icon"_s.arg(words.bar),
            .plea = u"Tarnwick is free to use without restrictions. If you enjoy monitoring your servers from the %1, "
                    "consider supporting development on Ko-fi!"_s.arg(words.bar),
            .version = u"Tarnwick %1 \u2022 Native %2 Monitor"_s.arg(productVersion, words.system)};
}

SettingsContent settingsContent(const AppSettings& settings) {
    return {.showMenuBarLabel = settings.showMenuBarLabel,
            .refreshInterval = static_cast<double>(settings.refreshIntervalSeconds),
            .refreshIntervalText = QString::number(settings.refreshIntervalSeconds) + u" seconds"_s,
            .diskThreshold = settings.alertDiskThresholdPercent,
            .diskThresholdText = fixedPoint(settings.alertDiskThresholdPercent, 0) + u'%',
            .soundAlerts = settings.soundAlerts,
            .sharesConnections = settings.sharesConnections(),
            .startsAtLogin = settings.launchAtLogin};
}

} // namespace tarnwick
