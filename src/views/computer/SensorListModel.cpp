#include "SensorListModel.h"

#include <algorithm>

namespace tarnwick {

void SensorListModel::setRows(const QList<MacSensorRow>& rows) {
    const auto before = static_cast<int>(rows_.size());
    const auto after = static_cast<int>(rows.size());
    for (int row = 0; row < std::min(before, after); ++row) {
        if (rows_[row] == rows[row])
            continue;
        rows_[row] = rows[row];
        Q_EMIT dataChanged(index(row), index(row), {SensorRole});
    }
    if (after > before) {
        beginInsertRows({}, before, after - 1);
        rows_ = rows;
        endInsertRows();
    } else if (after < before) {
        beginRemoveRows({}, after, before - 1);
        rows_ = rows;
        endRemoveRows();
    }
}

int SensorListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant SensorListModel::data(const QModelIndex& index, int role) const {
    if (role != SensorRole || !checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    return QVariant::fromValue(rows_[index.row()]);
}

QHash<int, QByteArray> SensorListModel::roleNames() const {
    return {{SensorRole, "sensor"}};
}

} // namespace tarnwick
