#include "MenuBarItem.h"

namespace tarnwick {

using namespace Qt::StringLiterals;
using enum MenuBarItem;

namespace {

/// In titles and captions, %1 is PinWords::ownFigure and %2 is PinWords::processor.
struct ItemRow {
    QStringView rawValue;
    QStringView title;
    QStringView menuCaption;
    QStringView symbol;
    QStringView labelSymbol;
    QStringView previewExample;
    QStringView tourExample;
};

// clang-format off
constexpr std::array<ItemRow, allMenuBarItems.size()> itemRows{{
    {u"socTemp", u"%1%2 Average Temp", u"%1%2 Average Temp", u"thermometer.medium", u"thermometer.medium", u"36\u00b0C", u"36\u00b0C"},
    {u"peakTemp", u"Peak Core / Hotspot Temp", u"Hotspot / Peak Core Temp", u"flame", u"flame.fill", u"Peak 42\u00b0C", u"Peak 42\u00b0C"},
    {u"ssdTemp", u"SSD Storage Temp", u"SSD Storage Temp", u"internaldrive", u"internaldrive", u"SSD 32\u00b0C", u"SSD 32\u00b0C"},
    {u"cpuUsage", u"%1CPU Usage", u"%1CPU Usage", u"cpu", u"cpu", u"CPU 12%", u"CPU 12%"},
    {u"gpuUsage", u"%1GPU Usage", u"%1GPU Usage", u"square.grid.2x2", u"square.grid.2x2", u"GPU 8%", u"GPU 8%"},
    {u"ramUsage", u"%1RAM Usage", u"%1RAM Usage", u"memorychip", u"memorychip", u"RAM 42%", u"RAM 69%"},
    {u"serverStatus", u"Server Fleet Status", u"Server Fleet Status", u"server.rack", u"waveform.path.ecg", u"2 OK", u"2 OK"},
}};

struct PresetRow {
    QStringView symbol;
    QStringView menuCaption;
    QStringView sheetCaption;
    QStringView settingsCaption;
    QStringView tourCaption;
};
constexpr std::array<PresetRow, allPinPresets.size()> presetRows{{
    {u"pin.fill", u"Pin All Metrics (All 7)", u"Pin All (7 Items)", u"All", u"Pin All"},
    {u"cpu", u"Pin All Resources (CPU + GPU + RAM)", u"Pin Resources", u"Resources", u""},
    {u"flame.fill", u"Pin All Thermals (%2 + Peak + SSD)", u"Pin All Temps", u"", u""},
    {u"arrow.counterclockwise", u"Reset Default (%2 + Status)", u"Reset Default", u"Reset", u"Reset"},
}};
// clang-format on

const ItemRow& row(MenuBarItem item) {
    return itemRows.at(static_cast<size_t>(item));
}

const PresetRow& row(PinPreset preset) {
    return presetRows.at(static_cast<size_t>(preset));
}

/// Not by QString::arg(), which expects that each text has both marks.
QString filled(QStringView text, const PinWords& words) {
    return text.toString().replace(u"%1"_s, words.ownFigure.toString()).replace(u"%2"_s, words.processor.toString());
}

} // namespace

QString rawValue(MenuBarItem item) {
    return row(item).rawValue.toString();
}

std::optional<MenuBarItem> menuBarItemFromRawValue(QStringView text) {
    for (const MenuBarItem item : allMenuBarItems)
        if (row(item).rawValue == text)
            return item;
    return std::nullopt;
}

QString title(MenuBarItem item, const PinWords& words) {
    return filled(row(item).title, words);
}

QString menuCaption(MenuBarItem item, const PinWords& words) {
    return filled(row(item).menuCaption, words);
}

QString symbolName(MenuBarItem item) {
    return row(item).symbol.toString();
}

QString labelSymbolName(MenuBarItem item) {
    return row(item).labelSymbol.toString();
}

QString previewExample(MenuBarItem item) {
    return row(item).previewExample.toString();
}

QString tourExample(MenuBarItem item) {
    return row(item).tourExample.toString();
}

MenuBarItemSet pins(PinPreset preset) {
    switch (preset) {
    case PinPreset::All:
        return {allMenuBarItems.begin(), allMenuBarItems.end()};
    case PinPreset::Resources:
        return {cpuUsage, gpuUsage, ramUsage};
    case PinPreset::Thermals:
        return {socTemp, peakTemp, ssdTemp};
    case PinPreset::Standard:
        break;
    }
    return {socTemp, serverStatus};
}

QString symbolName(PinPreset preset) {
    return row(preset).symbol.toString();
}

QString menuCaption(PinPreset preset, const PinWords& words) {
    return filled(row(preset).menuCaption, words);
}

QString sheetCaption(PinPreset preset) {
    return row(preset).sheetCaption.toString();
}

QString settingsCaption(PinPreset preset) {
    return row(preset).settingsCaption.toString();
}

QString tourCaption(PinPreset preset) {
    return row(preset).tourCaption.toString();
}

} // namespace tarnwick
