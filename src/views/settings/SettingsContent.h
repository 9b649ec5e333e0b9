#pragma once

#include "AppSettings.h"
#include "ProductLinks.h"
#include "ProductVersion.h"
#include "SharedCaptions.h"
#include "SystemWords.h"
#include "controls/SliderRange.h"

#include <QString>
#include <QtQmlIntegration>

namespace tarnwick {

inline constexpr SliderRange refreshIntervalRange{.from = 10, .to = 120, .step = 5};
inline constexpr SliderRange diskThresholdRange{.from = 70, .to = 98, .step = 1};

/// The settings sheet's fixed texts.
struct SettingsWords {
    Q_GADGET
    QML_VALUE_TYPE(settingsWords)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString done MEMBER done)
    Q_PROPERTY(QString pins MEMBER pins)
    Q_PROPERTY(QString pinsGuide MEMBER pinsGuide)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString monitoring MEMBER monitoring)
    Q_PROPERTY(QString refreshInterval MEMBER refreshInterval)
    Q_PROPERTY(QString diskThreshold MEMBER diskThreshold)
    Q_PROPERTY(QString sound MEMBER sound)
    Q_PROPERTY(QString share MEMBER share)
    Q_PROPERTY(QString shareGuide MEMBER shareGuide)
    Q_PROPERTY(QString startAtLogin MEMBER startAtLogin)
    Q_PROPERTY(QString tour MEMBER tour)
    Q_PROPERTY(QString support MEMBER support)
    Q_PROPERTY(QString price MEMBER price)
    Q_PROPERTY(QString plea MEMBER plea)
    Q_PROPERTY(QString donate MEMBER donate)
    Q_PROPERTY(QString webSite MEMBER webSite)
    Q_PROPERTY(QString version MEMBER version)
    Q_PROPERTY(QString quit MEMBER quit)

public:
    QString title = QStringLiteral("Tarnwick Settings");
    QString done = SharedCaptions::done.toString();
    QString pins;
    QString pinsGuide;
    QString label;
    QString monitoring = QStringLiteral("Monitoring Preferences");
    QString refreshInterval = QStringLiteral("Refresh Interval:");
    QString diskThreshold = QStringLiteral("Disk Full Alert Threshold:");
    QString sound = QStringLiteral("Sound effects on critical alert");
    QString share = QStringLiteral("Share connections");
    QString shareGuide = QStringLiteral("one to each server stays open");
    QString startAtLogin = QStringLiteral("Start at login");
    QString tour = QStringLiteral("Replay Welcome Tour & Demo...");
    QString support = QStringLiteral("Support Tarnwick");
    QString price = SharedCaptions::price.toString();
    QString plea;
    QString donate = QStringLiteral("Support on Ko-fi");
    QString webSite = QStringLiteral("Website: ") + ProductLinks::webSiteDomain.toString();
    QString version;
    QString quit = QStringLiteral("Quit Tarnwick");
};

[[nodiscard]] SettingsWords settingsWords(const SystemWords& words);

/// What the settings sheet shows of the settings, but for the pins. A value outside its slider's range is shown as it
/// is.
struct SettingsContent {
    Q_GADGET
    QML_VALUE_TYPE(settingsContent)
    Q_PROPERTY(bool showMenuBarLabel MEMBER showMenuBarLabel)
    Q_PROPERTY(double refreshInterval MEMBER refreshInterval)
    Q_PROPERTY(QString refreshIntervalText MEMBER refreshIntervalText)
    Q_PROPERTY(double diskThreshold MEMBER diskThreshold)
    Q_PROPERTY(QString diskThresholdText MEMBER diskThresholdText)
    Q_PROPERTY(bool soundAlerts MEMBER soundAlerts)
    Q_PROPERTY(bool sharesConnections MEMBER sharesConnections)
    Q_PROPERTY(bool startsAtLogin MEMBER startsAtLogin)

public:
    bool showMenuBarLabel = true;
    double refreshInterval = 0;
    QString refreshIntervalText;
    double diskThreshold = 0;
    QString diskThresholdText;
    bool soundAlerts = true;
    bool sharesConnections = false;
    bool startsAtLogin = false;
    friend bool operator==(const SettingsContent&, const SettingsContent&) = default;
};

[[nodiscard]] SettingsContent settingsContent(const AppSettings& settings);

} // namespace tarnwick
