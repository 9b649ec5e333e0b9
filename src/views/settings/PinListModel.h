#pragma once

#include "MenuBarItem.h"
#include "ServerStore.h"
#include "SystemWords.h"
#include "controls/RowListModel.h"

#include <QString>
#include <QtQmlIntegration>

namespace tarnwick {

/// A metric that can be pinned to the status item.
struct PinRow {
    Q_GADGET
    QML_VALUE_TYPE(pinRow)
    Q_PROPERTY(tarnwick::MenuBarItem item MEMBER item)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString example MEMBER example)
    Q_PROPERTY(bool isPinned MEMBER isPinned)

public:
    MenuBarItem item = MenuBarItem::socTemp;
    QString title;
    QString example;
    bool isPinned = false;

    friend bool operator==(const PinRow&, const PinRow&) = default;
};

/// All such metrics, in declaration order, and the ways a view has to pin them. Each edit is saved at once.
class PinListModel : public RowListModel<PinRow> {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Comes with its view's model")

public:
    /// Store and words must outlive the model.
    PinListModel(ServerStore& store, const SystemWords& words, QObject* parent = nullptr);

    /// Pins the item, or unpins it.
    Q_INVOKABLE void toggle(tarnwick::MenuBarItem item);
    /// Replaces the whole set.
    Q_INVOKABLE void choose(tarnwick::PinPreset preset);

private:
    void update();

    ServerStore& store_;
    const SystemWords& words_;
};

} // namespace tarnwick
