#include "ContainerListModel.h"

#include <algorithm>

namespace tarnwick {

void ContainerListModel::setRows(const QList<tarnwick::ContainerRowContent>& rows) {
    if (rows_ == rows)
        return;
    const auto before = static_cast<int>(rows_.size());
    const auto after = static_cast<int>(rows.size());
    for (int row = 0; row < std::min(before, after); ++row) {
        if (rows_[row] == rows[row])
            continue;
        rows_[row] = rows[row];
        Q_EMIT dataChanged(index(row), index(row), {ContentRole});
    }
    if (after > before) {
        beginInsertRows({}, before, after - 1);
        rows_ = rows;
        endInsertRows();
    }
    if (after < before) {
        beginRemoveRows({}, after, before - 1);
        rows_ = rows;
        endRemoveRows();
    }
    Q_EMIT rowsChanged();
}

int ContainerListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant ContainerListModel::data(const QModelIndex& index, int role) const {
    if (role != ContentRole || !checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    return QVariant::fromValue(rows_[index.row()]);
}

QHash<int, QByteArray> ContainerListModel::roleNames() const {
    return {{ContentRole, "content"}};
}

} // namespace tarnwick
