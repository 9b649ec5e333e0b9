#include "AddServerModel.h"

#include <utility>

namespace tarnwick {

AddServerModel::AddServerModel(ServerStore& store, UIState& ui, const ViewCollaborators& collaborators, QObject* parent)
    : QObject(parent)
    , store_(store)
    , ui_(ui)
    , collaborators_(collaborators)
    , words_(addServerWords(collaborators.computer.words()))
    , meanings_(collaborators.askAlias, this)
    , readHostsSoon_(this, [this] { readHosts(); })
    , canSave_(canSaveForm(ui)) {
    connect(&ui, &UIState::newServerNameChanged, this, &AddServerModel::updateCanSave);
    connect(&ui, &UIState::newServerHostChanged, this, &AddServerModel::updateCanSave);
    readHosts();
    connect(&store, &ServerStore::serversChanged, this, &AddServerModel::readHosts);
    connect(&ui, &UIState::addServerTabChanged, this, [this] {
        meanings_.forget(); // the file may have changed
        readHosts();
    });
    connect(&meanings_, &AliasMeanings::found, this, &AddServerModel::showHosts);
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
    const bool countChanges = hosts_.size() != rows_.rows().size();
    showHosts();
    if (countChanges)
        Q_EMIT importCaptionChanged();
    if (std::exchange(isIncluding_, collaborators_.sshConfigIncludes()) != isIncluding_)
        Q_EMIT includeGuideChanged();
}

void AddServerModel::showHosts() {
    const FleetIndex fleet(store_.servers());
    QList<DetectedHost> rows;
    rows.reserve(hosts_.size());
    for (const SSHConfigHost& host : hosts_) {
        const bool asks = ui_.addServerTab() == 1 && !fleet.reachesByAlias(host);
        rows += detectedHost(host, fleet.contains(host), asks ? meanings_.meaning(host) : SSHAliasMeaning());
    }
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

void AddServerModel::importAlias(int row) {
    if (row >= 0 && row < hosts_.size() && !rows_.rows()[row].addAlias.isEmpty())
        store_.addServer(serverFromHost(meanings_.meaning(hosts_[row]).host));
}

} // namespace tarnwick
