#include "SettingsModel.h"

#include "ProductLinks.h"

#include <QCoreApplication>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace tarnwick {

SettingsModel::SettingsModel(ServerStore& store, UIState& ui, const ViewCollaborators& collaborators, QObject* parent)
    : QObject(parent)
    , store_(store)
    , ui_(ui)
    , collaborators_(collaborators)
    , pins_(store, collaborators.computer.words()) {
    followLoginItem(ServerStore::Saving::later);
    content_ = settingsContent(store.settings());
    connect(&store, &ServerStore::settingsChanged, this, &SettingsModel::update);
    // Queued, so that the view that asked for it has finished its event by then.
    connect(this, &SettingsModel::quitRequested, QCoreApplication::instance(), &QCoreApplication::quit,
            Qt::QueuedConnection);
}

void SettingsModel::update() {
    SettingsContent content = settingsContent(store_.settings());
    if (content == content_)
        return;
    content_ = std::move(content);
    Q_EMIT contentChanged();
}

void SettingsModel::setShowMenuBarLabel(bool show) {
    store_.editSettings([show](AppSettings& settings) { settings.showMenuBarLabel = show; });
}

void SettingsModel::setRefreshInterval(double seconds) {
    const double stop = tarnwick::refreshIntervalRange.nearestStop(seconds);
    store_.editSettings([stop](AppSettings& settings) { settings.refreshIntervalSeconds = static_cast<qint64>(stop); },
                        ServerStore::Saving::later);
}

void SettingsModel::setDiskThreshold(double percent) {
    const double stop = tarnwick::diskThresholdRange.nearestStop(percent);
    store_.editSettings([stop](AppSettings& settings) { settings.alertDiskThresholdPercent = stop; },
                        ServerStore::Saving::later);
}

void SettingsModel::setSoundAlerts(bool sound) {
    store_.editSettings([sound](AppSettings& settings) { settings.soundAlerts = sound; }, ServerStore::Saving::later);
}

void SettingsModel::setSharesConnections(bool shares) {
    store_.editSettings([shares](AppSettings& settings) { settings.shareConnections = shares; });
}

void SettingsModel::setStartsAtLogin(bool starts) {
    collaborators_.setStartsAtLogin(starts);
    followLoginItem(ServerStore::Saving::now);
    Q_EMIT contentChanged(); // also when nothing could be written: the switch shows what the user chose
}

void SettingsModel::followLoginItem(ServerStore::Saving saving) {
    if (const bool starts = collaborators_.startsAtLogin(); starts != store_.settings().launchAtLogin)
        store_.editSettings([starts](AppSettings& settings) { settings.launchAtLogin = starts; }, saving);
}

void SettingsModel::quit() {
    store_.save();
    Q_EMIT quitRequested();
}

void SettingsModel::replayTour() {
    ui_.setOnboardingStep(0);
    ui_.setShowingOnboarding(true);
}

void SettingsModel::openDonationPage() {
    collaborators_.openAddress(QUrl(ProductLinks::donationPage.toString()));
}

void SettingsModel::openWebSite() {
    collaborators_.openAddress(QUrl(ProductLinks::webSite.toString()));
}

} // namespace tarnwick
