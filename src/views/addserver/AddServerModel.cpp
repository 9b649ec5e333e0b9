#include "AddServerModel.h"

namespace tarnwick {

AddServerModel::AddServerModel(ServerStore& store, UIState& ui, const ViewCollaborators& collaborators, QObject* parent)
    : QObject(parent)
    , store_(store)
    , ui_(ui)
    , collaborators_(collaborators)
    , words_(addServerWords(collaborators.computer.words()))
    , readHostsSoon_(this, [this] { readHosts(); })
    , canSave_(canSaveForm(ui)) {
    connect(&ui, &UIState::newServerNameChanged, this, &AddServerModel::updateCanSave);
    connect(&ui, &UIState::newServerHostChanged, this, &AddServerModel::updateCanSave);
    readHosts();
    connect(&store, &ServerStore::serversChanged, this, &AddServerModel::readHosts);
    connect(&ui, &UIState::addServerTabChanged, this, &AddServerModel::readHosts);
    // Probe results arrive in bursts.
    connect(&store, &ServerStore::serverChanged, this, [this] { readHostsSoon_.request(); });
}

void AddServerModel::updateCanSave() {
    const bool canSave = canSaveForm(ui_);
    if (canSave == canSave_)
        return;
    canSave_ = canSave;
    Q_EMIT canSaveChanged();
}

void AddServerModel::readHosts() {
    hosts_ = collaborators_.sshHosts();
    const FleetIndex fleet(store_.servers());
    QList<DetectedHost> rows;
    rows.reserve(hosts_.size());
    for (const SSHConfigHost& host : hosts_)
        rows += detectedHost(host, fleet.contains(host));
    const bool countChanges = rows.size() != rows_.rows().size();
    rows_.setRows(rows);
    if (countChanges)
        Q_EMIT importCaptionChanged();
}

void AddServerModel::saveManual() {
    if (!canSave_)
        return;
    store_.addServer(serverFromForm(ui_));
    ui_.resetAddServerForm();
}

void AddServerModel::importHost(int row) {
    if (row >= 0 && row < hosts_.size() && !rows_.rows()[row].isAdded)
        store_.addServer(serverFromHost(hosts_[row]));
}

} // namespace tarnwick
