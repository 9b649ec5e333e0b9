#include "DetectedHostModel.h"

namespace tarnwick {

DetectedHostModel::DetectedHostModel(const QList<SSHConfigHost>& hosts, QObject* parent) : QAbstractListModel(parent) {
    rows_.reserve(hosts.size());
    for (const SSHConfigHost& host : hosts)
        rows_.append({.host = host});
}

int DetectedHostModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant DetectedHostModel::data(const QModelIndex& index, int role) const {
    if (role != HostRole || !checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Row& row = rows_[index.row()];
    return QVariant::fromValue(detectedHost(row.host, row.isAdded));
}

QHash<int, QByteArray> DetectedHostModel::roleNames() const {
    return {{HostRole, "host"}};
}

void DetectedHostModel::markAdded(const FleetIndex& fleet) {
    for (qsizetype place = 0; place < rows_.size(); ++place) {
        const bool isAdded = fleet.contains(rows_[place].host);
        if (isAdded == rows_[place].isAdded)
            continue;
        rows_[place].isAdded = isAdded;
        const QModelIndex changed = index(static_cast<int>(place));
        Q_EMIT dataChanged(changed, changed, {HostRole});
    }
}

std::optional<SSHConfigHost> DetectedHostModel::importableHost(int row) const {
    if (row < 0 || row >= rows_.size() || rows_[row].isAdded)
        return std::nullopt;
    return rows_[row].host;
}

} // namespace tarnwick
