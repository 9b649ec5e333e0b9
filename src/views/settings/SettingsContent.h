#pragma once

#include "AppSettings.h"
#include "controls/SliderRange.h"

#include <QString>
#include <QtQmlIntegration>

namespace tarnwick {

inline constexpr SliderRange refreshIntervalRange{.from = 10, .to = 120, .step = 5};
inline constexpr SliderRange diskThresholdRange{.from = 70, .to = 98, .step = 1};

/// What the settings sheet shows of the settings, but for the pins. The values stand as they are, in their slider's
/// range or not.
struct SettingsContent {
    Q_GADGET
    QML_VALUE_TYPE(settingsContent)
    Q_PROPERTY(bool showMenuBarLabel MEMBER showMenuBarLabel)
    Q_PROPERTY(double refreshInterval MEMBER refreshInterval)
    Q_PROPERTY(QString refreshIntervalText MEMBER refreshIntervalText)
    Q_PROPERTY(double diskThreshold MEMBER diskThreshold)
    Q_PROPERTY(QString diskThresholdText MEMBER diskThresholdText)
    Q_PROPERTY(bool soundAlerts MEMBER soundAlerts)

public:
    bool showMenuBarLabel = true;
    double refreshInterval = 0;
    QString refreshIntervalText;
    double diskThreshold = 0;
    QString diskThresholdText;
    bool soundAlerts = true;
    friend bool operator==(const SettingsContent&, const SettingsContent&) = default;
};

[[nodiscard]] SettingsContent settingsContent(const AppSettings& settings);

} // namespace tarnwick
