#pragma once

#include "MenuBarItem.h"
#include "ServerStore.h"

#include <QAbstractListModel>
#include <QQmlParserStatus>
#include <QtQmlIntegration>

namespace tarnwick {

/// The metrics that can be pinned to the status item, one row each in declaration order, and the ways a view has to pin
/// them. Each edit is saved at once. Rows change in place, so that a control keeps the keyboard while it is toggled.
class PinListModel : public QAbstractListModel, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    /// Must outlive the model.
    Q_PROPERTY(tarnwick::ServerStore* store MEMBER store_ REQUIRED)

public:
    enum Role { ItemRole = Qt::UserRole + 1, TitleRole, ExampleRole, PinnedRole };
    enum class Preset { All, Resources, Thermals, Standard };
    Q_ENUM(Preset)

    using QAbstractListModel::QAbstractListModel;
    explicit PinListModel(ServerStore& store, QObject* parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /// Pins the item, or unpins it.
    Q_INVOKABLE void toggle(tarnwick::MenuBarItem item);
    /// Replaces the whole set.
    Q_INVOKABLE void choose(tarnwick::PinListModel::Preset preset);

private:
    void classBegin() override {}
    void componentComplete() override;
    void takeOver();

    ServerStore* store_ = nullptr;
    MenuBarItemSet pinned_;
};

} // namespace tarnwick
