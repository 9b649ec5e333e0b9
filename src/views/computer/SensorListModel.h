#pragma once

#include "MacInfoContent.h"

#include <QAbstractListModel>
#include <QtQmlIntegration>

namespace tarnwick {

/// The temperature sensors, hottest first. Rows are told apart by their place alone, since names repeat: new readings
/// change those rows that differ and add or remove at the end.
class SensorListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Comes with MacInfoModel")

public:
    enum Role { SensorRole = Qt::UserRole + 1 };

    using QAbstractListModel::QAbstractListModel;

    void setRows(const QList<MacSensorRow>& rows);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    QList<MacSensorRow> rows_;
};

} // namespace tarnwick
