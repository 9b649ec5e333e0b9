#pragma once

#include "FleetFilter.h"
#include "OncePerTurn.h"
#include "ServerStore.h"
#include "ThisComputer.h"
#include "UIState.h"
#include "card/ServerCardContent.h"

#include <QAbstractListModel>
#include <QPointer>
#include <QtQmlIntegration>

namespace tarnwick {

/// The fleet as rows of card content, in the store's order; while it is filtered, the servers that match. The rows
/// follow what the store and the UI state publish, once per turn of the event loop and by the smallest changes:
/// removals, moves, insertions, and data changes of only those rows that differ; never a reset. Rows that share an id
/// are told apart by their order.
class ServerListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Comes with its view")

public:
    enum Role { ContentRole = Qt::UserRole + 1 };

    /// All three must outlive the model.
    ServerListModel(ServerStore& store, UIState& ui, ThisComputer& computer, QObject* parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    [[nodiscard]] const FleetFilter& filter() const { return filter_; }
    /// The rows follow at once. A fleet that is not counted in groups is not filtered by one.
    void setFilter(const FleetFilter& filter);
    /// The servers at the rows' latest update, also those that do not match.
    [[nodiscard]] qsizetype fleetSize() const { return fleetSize_; }
    /// How many of those are in the group, whatever the filter.
    [[nodiscard]] int count(FleetGroup group) const { return counts_.at(static_cast<size_t>(group)); }
    /// Whether the fleet is so large that it is counted in groups.
    [[nodiscard]] bool isCounted() const { return fleetSize_ > mostUncounted; }
    /// The row's server.
    [[nodiscard]] QUuid id(int row) const { return rows_[row].server.id; }

Q_SIGNALS:
    /// The rows have followed what was published.
    void updated();
    void filterWillChange();
    void filterChanged(); ///< the rows have followed

private:
    static constexpr qsizetype mostUncounted = 8;

    struct Row {
        Server server;
        CardState state;
        int occurrence = 0; ///< counts the rows of the same id
        friend bool operator==(const Row&, const Row&) = default;
    };
    using Key = std::pair<QUuid, int>;
    static Key keyOf(const Row& row) { return {row.server.id, row.occurrence}; }

    void updateRows();
    void countFleet();
    [[nodiscard]] QList<Row> publishedRows() const;
    [[nodiscard]] CardState stateOf(const Server& server) const;
    void removeMissing(const QHash<Key, qsizetype>& places);
    void arrange(const QList<Row>& published, const QHash<Key, qsizetype>& places);
    void moveRow(qsizetype from, qsizetype to);
    void replaceAll(const QList<Row>& published);
    void replaceChanged(const QList<Row>& published);

    ServerStore& store_;
    UIState& ui_;
    ThisComputer& computer_;
    FleetFilter filter_;
    qsizetype fleetSize_ = 0;
    std::array<int, fleetGroups.size()> counts_{};
    QList<Row> rows_;
    OncePerTurn update_{this, [this] {
                            updateRows();
                        }};
};

} // namespace tarnwick
