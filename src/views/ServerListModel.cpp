#include "ServerListModel.h"

namespace tarnwick {

ServerListModel::ServerListModel(ServerStore& store, UIState& ui, ThisComputer& computer, QObject* parent)
    : QAbstractListModel(parent), store_(store), ui_(ui), computer_(computer) {
    countFleet();
    rows_ = publishedRows();
    connect(
        &store, &ServerStore::objectWillChange, this, [this] { update_.request(); });
    connect(&ui, &UIState::objectWillChange, this, [this] { update_.request(); });
}

int ServerListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant ServerListModel::data(const QModelIndex& index, int role) const {
    if (role != ContentRole || !checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Row& row = rows_[index.row()];
    return QVariant::fromValue(
        serverCardContent(row.server, row.state, computer_.words(), store_.trend(row.server.id)));
}

QHash<int, QByteArray> ServerListModel::roleNames() const {
    return {{ContentRole, "content"}};
}

void ServerListModel::setFilter(const FleetFilter& filter) {
    const FleetFilter possible(filter.text(), isCounted() ? filter.group() : std::nullopt);
    if (possible == filter_)
        return;
    Q_EMIT filterWillChange();
    filter_ = possible;
    countFleet();
    replaceAll(publishedRows());
    Q_EMIT updated();
    Q_EMIT filterChanged();
}

void ServerListModel::updateRows() {
    countFleet();
    if (filter_.group() && !isCounted())
        return setFilter(filter_);
    const QList<Row> published = publishedRows();
    QHash<Key, qsizetype> places;
    places.reserve(published.size());
    for (qsizetype place = 0; place < published.size(); ++place)
        places.insert(keyOf(published[place]), place);
    removeMissing(places);
    arrange(published, places);
    replaceChanged(published);
    Q_EMIT updated();
}

void ServerListModel::countFleet() {
    fleetSize_ = store_.servers().size();
    counts_.fill(0);
    for (const Server& server : store_.servers())
        if (const auto group = fleetGroup(server))
            ++counts_.at(static_cast<size_t>(*group));
}

QList<ServerListModel::Row> ServerListModel::publishedRows() const {
    QList<Row> rows;
    rows.reserve(store_.servers().size());
    QHash<QUuid, int> occurrences;
    for (const Server& server : store_.servers()) {
        const int occurrence = occurrences[server.id]++;
        if (filter_.matches(server))
            rows += {server, stateOf(server), occurrence};
    }
    return rows;
}

CardState ServerListModel::stateOf(const Server& server) const {
    CardState state{.isExpanded = ui_.isExpanded(server.id), .isDragged = ui_.draggedServerId() == server.id};
    if (server.metrics && !server.metrics->containers.isEmpty())
        state.containers = ui_.containerMarks(server.id);
    if (server.isLocal) {
        state.avgSoc = computer_.socTemperature().value_or(0);
        if (server.metrics)
            state.gpuPercent = computer_.gpuPercent();
    }
    return state;
}

void ServerListModel::removeMissing(const QHash<Key, qsizetype>& places) {
    for (qsizetype row = rows_.size() - 1; row >= 0; --row) {
        if (places.contains(keyOf(rows_[row])))
            continue;
        beginRemoveRows({}, static_cast<int>(row), static_cast<int>(row));
        rows_.removeAt(row);
        endRemoveRows();
    }
}

void ServerListModel::arrange(const QList<Row>& published, const QHash<Key, qsizetype>& places) {
    for (qsizetype place = 0; place < published.size(); ++place) {
        const Key wanted = keyOf(published[place]);
        const auto isWanted = [&wanted](const Row& row) {
            return keyOf(row) == wanted;
        };
        const auto found = std::find_if(rows_.cbegin() + place, rows_.cend(), isWanted);
        if (found == rows_.cend()) {
            beginInsertRows({}, static_cast<int>(place), static_cast<int>(place));
            rows_.insert(place, published[place]);
            endInsertRows();
            continue;
        }
        const qsizetype from = found - rows_.cbegin();
        if (from == place)
            continue;
        // A row that went down is moved once, instead of moving up each row that it passed.
        const qsizetype goal = std::min(places[keyOf(rows_[place])], rows_.size() - 1);
        if (from == place + 1 && goal > from)
            moveRow(place, goal);
        else
            moveRow(from, place);
    }
}

void ServerListModel::moveRow(qsizetype from, qsizetype to) {
    const auto destination = static_cast<int>(to > from ? to + 1 : to);
    beginMoveRows({}, static_cast<int>(from), static_cast<int>(from), {}, destination);
    rows_.move(from, to);
    endMoveRows();
}

void ServerListModel::replaceAll(const QList<Row>& published) {
    const auto before = static_cast<int>(rows_.size());
    const auto after = static_cast<int>(published.size());
    if (after < before) {
        beginRemoveRows({}, after, before - 1);
        rows_.resize(after);
        endRemoveRows();
    }
    replaceChanged(published);
    if (after > before) {
        beginInsertRows({}, before, after - 1);
        rows_ = published;
        endInsertRows();
    }
}

void ServerListModel::replaceChanged(const QList<Row>& published) {
    for (qsizetype row = 0; row < rows_.size(); ++row) {
        if (rows_[row] == published[row])
            continue;
        rows_[row] = published[row];
        const QModelIndex changed = index(static_cast<int>(row));
        Q_EMIT dataChanged(changed, changed, {ContentRole});
    }
}

} // namespace tarnwick
