#pragma once

#include "PinListModel.h"
#include "PinPresetButton.h"
#include "ServerStore.h"
#include "SettingsContent.h"
#include "UIState.h"
#include "ViewCollaborators.h"

#include <QObject>
#include <QtQmlIntegration>

namespace tarnwick {

/// What the settings sheet shows and can do. The pins, the label's switch and the start at
/// login are saved at once; the sliders and
/// the sound are in force at once, and saved by save(), quit() or the next save of anything else.
class SettingsModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Comes with its view")
    Q_PROPERTY(tarnwick::SettingsContent content READ content NOTIFY contentChanged)
    Q_PROPERTY(tarnwick::PinListModel* pins READ pins CONSTANT)
    Q_PROPERTY(QList<tarnwick::PinPresetButton> presets READ presets CONSTANT)
    Q_PROPERTY(tarnwick::SliderRange refreshIntervalRange READ refreshIntervalRange CONSTANT)
    Q_PROPERTY(tarnwick::SliderRange diskThresholdRange READ diskThresholdRange CONSTANT)
    Q_PROPERTY(tarnwick::SettingsWords words READ words CONSTANT)

public:
    /// All three must outlive the model.
    SettingsModel(ServerStore& store, UIState& ui, const ViewCollaborators& collaborators, QObject* parent = nullptr);

    [[nodiscard]] const SettingsContent& content() const { return content_; }
    [[nodiscard]] PinListModel* pins() { return &pins_; }
    [[nodiscard]] QList<PinPresetButton> presets() const { return pinPresetButtons(settingsCaption); }
    [[nodiscard]] SliderRange refreshIntervalRange() const { return tarnwick::refreshIntervalRange; }
    [[nodiscard]] SliderRange diskThresholdRange() const { return tarnwick::diskThresholdRange; }
    [[nodiscard]] SettingsWords words() const { return settingsWords(collaborators_.computer.words()); }

    Q_INVOKABLE void setShowMenuBarLabel(bool show);
    /// Sets the slider's stop nearest to the value, which restarts the store's timer.
    Q_INVOKABLE void setRefreshInterval(double seconds);
    Q_INVOKABLE void setDiskThreshold(double percent);
    Q_INVOKABLE void setSoundAlerts(bool sound);
    Q_INVOKABLE void setSharesConnections(bool shares);
    /// Afterwards the content says what has become of it.
    Q_INVOKABLE void setStartsAtLogin(bool starts);
    Q_INVOKABLE void save() { store_.save(); }
    /// Saves, and asks the program to end.
    Q_INVOKABLE void quit();
    /// Starts the welcome tour at its first step.
    Q_INVOKABLE void replayTour();
    Q_INVOKABLE void openDonationPage();
    Q_INVOKABLE void openWebSite();

Q_SIGNALS:
    void contentChanged();
    /// Connected to the program's quit().
    void quitRequested();

private:
    void update();
    /// Takes over what is on disk, where the user may have changed it, too.
    void followLoginItem(ServerStore::Saving saving);

    ServerStore& store_;
    UIState& ui_;
    const ViewCollaborators& collaborators_;
    PinListModel pins_;
    SettingsContent content_;
};

} // namespace tarnwick
