#include "MacInfoModel.h"

#include "ViewCollaborators.h"

namespace tarnwick {

void MacInfoModel::componentComplete() {
    refresh();
    connect(ui_, &UIState::macInfoChanged, this, &MacInfoModel::update);
    connect(ui_, &UIState::showingAllSensorsChanged, this, &MacInfoModel::update);
    connect(store_, &ServerStore::settingsChanged, this, &MacInfoModel::update);
    update();

    connect(&snapshots_, &QTimer::timeout, this, &MacInfoModel::refresh);
    snapshots_.start(snapshotInterval);
}

void MacInfoModel::refresh() {
    ui_->setMacInfo(computerOf(*this).info());
}

void MacInfoModel::toggleSensors() {
    ui_->setShowingAllSensors(!ui_->showingAllSensors());
}

void MacInfoModel::update() {
    const MacHardwareInfo info = ui_->macInfo() ? *ui_->macInfo() : computerOf(*this).info();
    MacInfoContent content = macInfoContent(info, store_->settings().pinnedMenuBarItems, ui_->showingAllSensors());
    if (content == content_)
        return;
    content_ = std::move(content);
    sensors_.setRows(content_.sensors);
    Q_EMIT contentChanged();
}

} // namespace tarnwick
