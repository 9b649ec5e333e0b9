#include "MacInfoModel.h"

#include <algorithm>

namespace tarnwick {

MacInfoModel::MacInfoModel(ServerStore& store, UIState& ui, const ViewCollaborators& collaborators, QObject* parent)
    : QObject(parent), store_(store), ui_(ui), computer_(collaborators.computer), pins_(store, computer_.words()) {
    refresh();
    update();
    connect(&ui, &UIState::macInfoChanged, this, &MacInfoModel::update);
    connect(&ui, &UIState::showingAllSensorsChanged, this, &MacInfoModel::update);
    connect(&store, &ServerStore::settingsChanged, this, &MacInfoModel::update);
    connect(&snapshots_, &QTimer::timeout, this, &MacInfoModel::refresh);
    snapshots_.start(snapshotInterval);
}

void MacInfoModel::refresh() {
    ui_.setMacInfo(computer_.info());
}

void MacInfoModel::toggleSensors() {
    ui_.setShowingAllSensors(!ui_.showingAllSensors());
}

void MacInfoModel::update() {
    const MacHardwareInfo info = ui_.macInfo() ? *ui_.macInfo() : computer_.info();
    const auto self = std::ranges::find_if(store_.servers(), &Server::isLocal);
    const ServerTrend* trend = self == store_.servers().cend() ? nullptr : store_.trend(self->id);
    MacInfoContent content =
        macInfoContent(info, store_.settings().pinnedMenuBarItems, ui_.showingAllSensors(), computer_.words(), trend);
    if (content == content_)
        return;
    content_ = std::move(content);
    sensors_.setRows(content_.sensors);
    Q_EMIT contentChanged();
}

} // namespace tarnwick
