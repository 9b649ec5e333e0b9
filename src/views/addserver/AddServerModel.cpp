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
    rows_.isRead = [this](int row) {
        if (ui_.addServerTab() == 1 && !fleet_.reachesByAlias(hosts_[row]))
            meanings_.want(hosts_[row]);
    };
    readHosts();
    connect(&store, &ServerStore::serversChanged, this, &AddServerModel::readHosts);
    connect(&ui, &UIState::addServerTabChanged, this, [this] {
        if (ui_.addServerTab() != 1)
            meanings_.forget(); // the file may change until the hosts are seen again
        readHosts();
    });
    connect(&meanings_, &AliasMeanings::found, this, &AddServerModel::showMeaning);
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
    fleet_ = FleetIndex(store_.servers());
    QList<DetectedHost> rows;
    rows.reserve(hosts_.size());
    for (const SSHConfigHost& host : hosts_)
        rows += shown(host);
    const bool countChanges = rows.size() != rows_.rows().size();
    rows_.setRows(rows);
    if (countChanges)
        Q_EMIT importCaptionChanged();
    if (std::exchange(isIncluding_, collaborators_.sshConfigIncludes()) != isIncluding_)
        Q_EMIT includeGuideChanged();
}

DetectedHost AddServerModel::shown(const SSHConfigHost& host) const {
    return detectedHost(host, fleet_.contains(host),
                        fleet_.reachesByAlias(host) ? SSHAliasMeaning() : meanings_.meaning(host));
}

void AddServerModel::showMeaning(const SSHConfigHost& host) {
    for (int row = 0; row < hosts_.size(); ++row)
        if (hosts_[row] == host)
            rows_.setRow(row, shown(host));
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
