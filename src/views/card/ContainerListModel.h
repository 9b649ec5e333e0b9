#pragma once

#include "ContainerRowContent.h"

#include <QAbstractListModel>
#include <QtQmlIntegration>

namespace tarnwick {

/// The containers of one card. Rows are told apart by their place alone, so neither shared ids nor empty names mix
/// them up: setting new rows changes those that differ and adds or removes at the end.
class ContainerListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QList<tarnwick::ContainerRowContent> rows READ rows WRITE setRows NOTIFY rowsChanged)

public:
    enum Role { ContentRole = Qt::UserRole + 1 };

    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] const QList<ContainerRowContent>& rows() const { return rows_; }
    void setRows(const QList<tarnwick::ContainerRowContent>& rows);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void rowsChanged();

private:
    QList<ContainerRowContent> rows_;
};

} // namespace tarnwick
