#include "MacInfoContent.h"

#include "FixedPoint.h"
#include "MetricScale.h"

#include <array>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

using MetricScale::loadRole;
using MetricScale::temperatureRole;

QString percentText(double percent) {
    return fixedPoint(percent, 0) + u'%';
}

/// `tile` with what depends on whether its item is pinned.
MacTile pinnable(MacTile tile, const MenuBarItemSet& pinned) {
    tile.isPinned = pinned.contains(tile.item);
    tile.help = tile.isPinned ? u"Click to remove "_s + tile.title + u" from menu bar"_s
                              : u"Click to add "_s + tile.title + u" to menu bar"_s;
    if (!tile.isPinned)
        tile.hint = u"Pin to Bar +"_s;
    return tile;
}

QList<MacTile> tiles(const MacHardwareInfo& info, const MenuBarItemSet& pinned) {
    QList<MacTile> tiles{
        {.title = u"CPU Usage"_s,
         .value = percentText(info.cpuUsagePercent),
         .subtitle = coreCountText(info.cpuCores),
         .role = loadRole(info.cpuUsagePercent),
         .item = MenuBarItem::cpuUsage},
        {.title = u"GPU Usage"_s,
         .value = percentText(info.gpuUsagePercent),
         .subtitle = u"Integrated GPU (Metal)"_s,
         .role = loadRole(info.gpuUsagePercent),
         .item = MenuBarItem::gpuUsage},
        {.title = u"Unified RAM"_s,
         .value = percentText(info.ramUsagePercent),
         .subtitle = ramAmountText(info),
         .role = loadRole(info.ramUsagePercent),
         .item = MenuBarItem::ramUsage},
        {.title = u"SoC Average"_s,
         .value = temperatureText(info.avgSocTemp),
         .subtitle = u"CPU & GPU Die"_s,
         .role = temperatureRole(info.avgSocTemp),
         .item = MenuBarItem::socTemp},
        {.title = u"Peak Core"_s,
         .value = temperatureText(info.peakSocTemp),
         .subtitle = u"Hotspot Core"_s,
         .role = temperatureRole(info.peakSocTemp),
         .item = MenuBarItem::peakTemp},
        {.title = u"SSD Storage"_s,
         .value = temperatureText(info.ssdTemp),
         .subtitle = u"NAND Flash"_s,
         .role = info.ssdTemp ? temperatureRole(*info.ssdTemp) : ColorRole::Role::Gray,
         .item = MenuBarItem::ssdTemp},
    };
    for (MacTile& tile : tiles)
        tile = pinnable(std::move(tile), pinned);
    return tiles;
}

FleetPinRow fleetRow(const MenuBarItemSet& pinned) {
    const bool isPinned = pinned.contains(MenuBarItem::serverStatus);
    return {.title = title(MenuBarItem::serverStatus),
            .example = previewExample(MenuBarItem::serverStatus),
            .symbol = isPinned ? u"checkmark.circle.fill"_s : u"circle"_s,
            .isPinned = isPinned};
}

struct FactField {
    QStringView symbol;
    QStringView label;
    QString MacHardwareInfo::*value;
};
constexpr std::array factFields{
    FactField{u"sparkle", u"Chip", &MacHardwareInfo::chip},
    FactField{u"cpu", u"CPU Cores", &MacHardwareInfo::cpuCores},
    FactField{u"square.grid.2x2", u"GPU Cores", &MacHardwareInfo::gpuCores},
    FactField{u"memorychip", u"Unified Memory", &MacHardwareInfo::memoryString},
    FactField{u"desktopcomputer", u"Model Number", &MacHardwareInfo::modelIdentifier},
    FactField{u"apple.logo", u"OS Version", &MacHardwareInfo::osBuild},
    FactField{u"terminal", u"Kernel", &MacHardwareInfo::kernelVersion},
    FactField{u"clock", u"System Uptime", &MacHardwareInfo::uptimeString},
};

QList<MacFact> facts(const MacHardwareInfo& info) {
    QList<MacFact> facts;
    facts.reserve(factFields.size());
    for (const FactField& field : factFields)
        facts += {field.symbol.toString(), field.label.toString(), info.*field.value};
    return facts;
}

QList<MacSensorRow> sensorRows(const QList<MacThermalSensor>& sensors) {
    QList<MacSensorRow> rows;
    rows.reserve(sensors.size());
    for (const MacThermalSensor& sensor : sensors) {
        rows += {sensor.name, sensor.category, fixedPoint(sensor.tempCelsius, 1) + u" \u00b0C"_s,
                 temperatureRole(sensor.tempCelsius)};
    }
    return rows;
}

} // namespace

QString machineHeading(const MacHardwareInfo& info) {
    return info.modelName + u" ("_s + info.chip + u')';
}

QString machineIdentity(const MacHardwareInfo& info) {
    return info.modelIdentifier + u" \u2022 "_s + info.osVersion;
}

QString coreCountText(const QString& cpuCores) {
    return cpuCores.section(u' ', 0, 0) + u" Cores"_s;
}

QString ramAmountText(const MacHardwareInfo& info) {
    return fixedPoint(info.ramUsedGB, 1) + u'/' + fixedPoint(info.ramTotalGB, 0) + u"GB"_s;
}

QString temperatureText(std::optional<double> celsius) {
    return celsius ? fixedPoint(*celsius, 1) + u"\u00b0C"_s : u"--"_s;
}

QList<PinPresetButton> macPinPresets() {
    QList<PinPresetButton> buttons;
    for (const PinPreset preset : allPinPresets)
        buttons += {symbolName(preset), sheetCaption(preset), static_cast<PinListModel::Preset>(preset)};
    return buttons;
}

MacInfoContent macInfoContent(const MacHardwareInfo& info, const MenuBarItemSet& pinned, bool showingAllSensors) {
    return {.heading = machineHeading(info),
            .identity = machineIdentity(info),
            .chip = info.chip,
            .thermalState = info.thermalState,
            .thermalRole = temperatureRole(info.avgSocTemp),
            .tiles = tiles(info, pinned),
            .fleet = fleetRow(pinned),
            .facts = facts(info),
            .sensorsCaption = u"Individual Thermal Sensors ("_s + QString::number(info.sensors.size()) + u')',
            .sensorsSymbol = showingAllSensors ? u"chevron.up"_s : u"chevron.down"_s,
            .showsSensors = showingAllSensors,
            .sensors = sensorRows(info.sensors)};
}

} // namespace tarnwick
