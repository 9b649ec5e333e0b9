#include "AddServerModel.h"

namespace tarnwick {

AddServerModel::AddServerModel(ServerStore& store, UIState& ui, const ViewCollaborators& collaborators, QObject* parent)
    : QObject(parent)
    , store_(store)
    , ui_(ui)
    , words_(addServerWords(collaborators.computer.words()))
    , hosts_(collaborators.sshHosts())
    , markAddedSoon_(this, [this] { markAdded(); })
    , canSave_(canSaveForm(ui)) {
    connect(&ui, &UIState::newServerNameChanged, this, &AddServerModel::updateCanSave);
    connect(&ui, &UIState::newServerHostChanged, this, &AddServerModel::updateCanSave);
    markAdded();
    connect(&store, &ServerStore::serversChanged, this, &AddServerModel::markAdded);
    // Probe results arrive in bursts.
    connect(&store, &ServerStore::serverChanged, this, [this] { markAddedSoon_.request(); });
}

void AddServerModel::updateCanSave() {
    const bool canSave = canSaveForm(ui_);
    if (canSave == canSave_)
        return;
    canSave_ = canSave;
    Q_EMIT canSaveChanged();
}

void AddServerModel::markAdded() {
    const FleetIndex fleet(store_.servers());
    QList<DetectedHost> rows;
    rows.reserve(hosts_.size());
    for (const SSHConfigHost& host : hosts_)
        rows += detectedHost(host, fleet.contains(host));
    rows_.setRows(rows);
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
