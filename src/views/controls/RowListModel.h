#pragma once

#include <QAbstractListModel>
#include <QList>

#include <algorithm>

namespace tarnwick {

/// A list of rows for a view, each in the role "content". Rows are told apart by their place alone, so that shared ids
/// or empty names do not mix them up: new rows change those that differ, and add or remove at the end; never a reset.
///
/// QML knows subclasses of it, since a template cannot be a QML type: Q_OBJECT, QML_ELEMENT, and where QML assigns the
/// rows a property `rows`.
template <typename Content>
class RowListModel : public QAbstractListModel {
public:
    enum Role { ContentRole = Qt::UserRole + 1 };

    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] const QList<Content>& rows() const { return rows_; }

    void setRows(const QList<Content>& rows) {
        const auto before = static_cast<int>(rows_.size());
        const auto after = static_cast<int>(rows.size());
        for (int row = 0; row < std::min(before, after); ++row)
            setRow(row, rows[row]);
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

    /// Requires that there is such a row.
    void setRow(int row, const Content& content) {
        if (rows_[row] == content)
            return;
        rows_[row] = content;
        Q_EMIT dataChanged(index(row), index(row), {ContentRole});
    }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(rows_.size());
    }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        if (role != ContentRole || !checkIndex(index, CheckIndexOption::IndexIsValid))
            return {};
        return QVariant::fromValue(rows_[index.row()]);
    }
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override { return {{ContentRole, "content"}}; }

private:
    QList<Content> rows_;
};

} // namespace tarnwick
