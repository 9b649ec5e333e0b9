#pragma once

#include "ServerStore.h"
#include "SettingsContent.h"
#include "UIState.h"

#include <QObject>
#include <QQmlParserStatus>
#include <QtQmlIntegration>

namespace tarnwick {

/// What the settings sheet shows and can do, but for the pins. The label's switch is saved at once; the sliders and the
/// sound are in force at once, and saved by save(), quit() or whatever else saves the store.
class SettingsModel : public QObject, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(tarnwick::ServerStore* store MEMBER store_ REQUIRED)
    Q_PROPERTY(tarnwick::UIState* ui MEMBER ui_ REQUIRED)
    Q_PROPERTY(tarnwick::SettingsContent content READ content NOTIFY contentChanged)
    Q_PROPERTY(tarnwick::SliderRange refreshIntervalRange READ refreshIntervalRange CONSTANT)
    Q_PROPERTY(tarnwick::SliderRange diskThresholdRange READ diskThresholdRange CONSTANT)
    Q_PROPERTY(QString webSiteText READ webSiteText CONSTANT)

public:
    explicit SettingsModel(QObject* parent = nullptr);

    [[nodiscard]] const SettingsContent& content() const { return content_; }
    [[nodiscard]] SliderRange refreshIntervalRange() const { return tarnwick::refreshIntervalRange; }
    [[nodiscard]] SliderRange diskThresholdRange() const { return tarnwick::diskThresholdRange; }
    [[nodiscard]] QString webSiteText() const;

    Q_INVOKABLE void setShowMenuBarLabel(bool show);
    /// Takes the stop nearest to the slider's value, and restarts the store's timer.
    Q_INVOKABLE void setRefreshInterval(double seconds);
    Q_INVOKABLE void setDiskThreshold(double percent);
    Q_INVOKABLE void setSoundAlerts(bool sound);
    Q_INVOKABLE void save() { store_->save(); }
    /// Saves, and asks for the program's end.
    Q_INVOKABLE void quit();
    /// Starts the welcome tour at its first step.
    Q_INVOKABLE void replayTour();
    Q_INVOKABLE void openDonationPage();
    Q_INVOKABLE void openWebSite();

Q_SIGNALS:
    void contentChanged();
    /// Ends the program.
    void quitRequested();

private:
    void classBegin() override {}
    void componentComplete() override;
    void update();

    ServerStore* store_ = nullptr;
    UIState* ui_ = nullptr;
    SettingsContent content_;
};

} // namespace tarnwick
