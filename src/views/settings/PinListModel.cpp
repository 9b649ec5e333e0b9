#include "PinListModel.h"

#include <utility>

namespace tarnwick {

namespace {

constexpr int rows = static_cast<int>(allMenuBarItems.size());

MenuBarItem itemOf(int row) {
    return allMenuBarItems.at(static_cast<size_t>(row));
}

} // namespace

PinListModel::PinListModel(ServerStore& store, QObject* parent) : QAbstractListModel(parent), store_(&store) {
    componentComplete();
}

void PinListModel::componentComplete() {
    connect(store_, &ServerStore::settingsChanged, this, &PinListModel::takeOver);
    takeOver();
}

int PinListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows;
}

QVariant PinListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const MenuBarItem item = itemOf(index.row());
    switch (role) {
    case ItemRole:
        return static_cast<int>(item);
    case TitleRole:
        return title(item);
    case ExampleRole:
        return previewExample(item);
    case PinnedRole:
        return pinned_.contains(item);
    default:
        return {};
    }
}

QHash<int, QByteArray> PinListModel::roleNames() const {
    return {{ItemRole, "item"}, {TitleRole, "title"}, {ExampleRole, "example"}, {PinnedRole, "pinned"}};
}

void PinListModel::toggle(MenuBarItem item) {
    store_->editSettings([item](AppSettings& settings) { settings.togglePinned(item); });
}

void PinListModel::choose(Preset preset) {
    store_->editSettings(
        [preset](AppSettings& settings) { settings.pinnedMenuBarItems = pins(static_cast<PinPreset>(preset)); });
}

void PinListModel::takeOver() {
    const MenuBarItemSet before = std::exchange(pinned_, store_->settings().pinnedMenuBarItems);
    for (int row = 0; row < rows; ++row)
        if (pinned_.contains(itemOf(row)) != before.contains(itemOf(row)))
            Q_EMIT dataChanged(index(row), index(row), {PinnedRole});
}

} // namespace tarnwick
