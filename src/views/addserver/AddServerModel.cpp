#include "AddServerModel.h"

#include <utility>

namespace tarnwick {

AddServerModel::AddServerModel(QObject* parent) : QObject(parent), hosts_(SSHConfigParser::parseUserConfig()) {}

void AddServerModel::componentComplete() {
    connect(ui_, &UIState::newServerNameChanged, this, &AddServerModel::updateCanSave);
    connect(ui_, &UIState::newServerHostChanged, this, &AddServerModel::updateCanSave);
    updateCanSave();
    connect(store_, &ServerStore::serversChanged, this, &AddServerModel::markAdded);
    // Probe results arrive in bursts.
    connect(store_, &ServerStore::serverChanged, this, &AddServerModel::markAddedSoon);
    markAdded();
}

void AddServerModel::updateCanSave() {
    const bool canSave = canSaveForm(*ui_);
    if (canSave == canSave_)
        return;
    canSave_ = canSave;
    Q_EMIT canSaveChanged();
}

void AddServerModel::markAddedSoon() {
    if (!std::exchange(markingPending_, true))
        QMetaObject::invokeMethod(this, &AddServerModel::markAdded, Qt::QueuedConnection);
}

void AddServerModel::markAdded() {
    markingPending_ = false;
    hosts_.markAdded(FleetIndex(store_->servers()));
}

void AddServerModel::saveManual() {
    if (!canSave_)
        return;
    store_->addServer(serverFromForm(*ui_));
    ui_->resetAddServerForm();
}

void AddServerModel::importHost(int row) {
    if (const std::optional<SSHConfigHost> host = hosts_.importableHost(row))
        store_->addServer(serverFromHost(*host));
}

} // namespace tarnwick
