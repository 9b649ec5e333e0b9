#include "PinListModel.h"

#include "PinCaptions.h"

namespace tarnwick {

PinListModel::PinListModel(ServerStore& store, const SystemWords& words, QObject* parent)
    : RowListModel(parent), store_(store), words_(words) {
    connect(&store, &ServerStore::settingsChanged, this, &PinListModel::update);
    update();
}

void PinListModel::toggle(MenuBarItem item) {
    store_.editSettings([item](AppSettings& settings) { settings.togglePinned(item); });
}

void PinListModel::choose(PinPreset preset) {
    store_.editSettings([preset](AppSettings& settings) { settings.pinnedMenuBarItems = pins(preset); });
}

void PinListModel::update() {
    QList<PinRow> rows;
    for (const MenuBarItem item : allMenuBarItems)
        rows += {item, title(item, pinWords(words_)), previewExample(item),
                 store_.settings().pinnedMenuBarItems.contains(item)};
    setRows(rows);
}

} // namespace tarnwick
