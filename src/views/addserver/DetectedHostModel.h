#pragma once

#include "AddServerContent.h"

#include <QAbstractListModel>
#include <QtQmlIntegration>

namespace tarnwick {

/// The hosts of the user's ssh configuration, in the file's order. Its rows stay; what changes is which of them the
/// fleet has already.
class DetectedHostModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Comes with its view")

public:
    enum Role { HostRole = Qt::UserRole + 1 };

    explicit DetectedHostModel(const QList<SSHConfigHost>& hosts, QObject* parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /// Marks the hosts that `fleet` contains, and no others, as added.
    void markAdded(const FleetIndex& fleet);
    /// Absent for no row, and for a host that is added already.
    [[nodiscard]] std::optional<SSHConfigHost> importableHost(int row) const;

private:
    struct Row {
        SSHConfigHost host;
        bool isAdded = false;
    };

    QList<Row> rows_;
};

} // namespace tarnwick
