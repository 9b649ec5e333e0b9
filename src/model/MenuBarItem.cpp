#include "MenuBarItem.h"

namespace tarnwick {

namespace {
struct Row {
    MenuBarItem item;
    QStringView rawValue;
    QStringView title;
    QStringView previewExample;
};
constexpr std::array rows{
    Row{MenuBarItem::socTemp, u"socTemp", u"Mac SoC Average Temp", u"36\u00b0C"},
    Row{MenuBarItem::peakTemp, u"peakTemp", u"Peak Core / Hotspot Temp", u"Peak 42\u00b0C"},
    Row{MenuBarItem::ssdTemp, u"ssdTemp", u"SSD Storage Temp", u"SSD 32\u00b0C"},
    Row{MenuBarItem::cpuUsage, u"cpuUsage", u"Mac CPU Usage", u"CPU 12%"},
    Row{MenuBarItem::gpuUsage, u"gpuUsage", u"Mac GPU Usage", u"GPU 8%"},
    Row{MenuBarItem::ramUsage, u"ramUsage", u"Mac RAM Usage", u"RAM 42%"},
    Row{MenuBarItem::serverStatus, u"serverStatus", u"Server Fleet Status", u"2 OK"},
};
const Row& row(MenuBarItem item) {
    return rows.at(static_cast<size_t>(item));
}
} // namespace

QString rawValue(MenuBarItem item) {
    return row(item).rawValue.toString();
}

std::optional<MenuBarItem> menuBarItemFromRawValue(QStringView text) {
    for (const Row& candidate : rows)
        if (candidate.rawValue == text)
            return candidate.item;
    return std::nullopt;
}

QString title(MenuBarItem item) {
    return row(item).title.toString();
}

QString previewExample(MenuBarItem item) {
    return row(item).previewExample.toString();
}

namespace PinPreset {

MenuBarItemSet standard() {
    return {MenuBarItem::socTemp, MenuBarItem::serverStatus};
}

MenuBarItemSet thermals() {
    return {MenuBarItem::socTemp, MenuBarItem::peakTemp, MenuBarItem::ssdTemp};
}

MenuBarItemSet resources() {
    return {MenuBarItem::cpuUsage, MenuBarItem::gpuUsage, MenuBarItem::ramUsage};
}

MenuBarItemSet all() {
    return {allMenuBarItems.begin(), allMenuBarItems.end()};
}

} // namespace PinPreset

} // namespace tarnwick
