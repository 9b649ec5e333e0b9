#include "MacInfoContent.h"

#include "FixedPoint.h"
#include "MetricScale.h"

#include <array>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr MacTileWording wording{
    .cpuDecimals = 0, .gpu = u"Integrated GPU (Metal)", .processor = u"CPU & GPU Die", .hotspot = u"Hotspot Core"};

/// The tile, completed with the texts that depend on whether its item is pinned.
MacTile pinnable(MacTile tile, const MenuBarItemSet& pinned) {
    tile.isPinned = pinned.contains(tile.item);
    tile.help = tile.isPinned ? u"Click to remove "_s + tile.title + u" from menu bar"_s
                              : u"Click to add "_s + tile.title + u" to menu bar"_s;
    if (!tile.isPinned)
        tile.hint = u"Pin to Bar +"_s;
    return tile;
}

MacTileGroup pinnable(MacTileGroup group, const MenuBarItemSet& pinned) {
    for (MacTile& tile : group.tiles)
        tile = pinnable(std::move(tile), pinned);
    return group;
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
                 MetricScale::temperatureRole(sensor.tempCelsius)};
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

MacInfoContent macInfoContent(const MacHardwareInfo& info, const MenuBarItemSet& pinned, bool showingAllSensors) {
    return {.heading = machineHeading(info),
            .identity = machineIdentity(info),
            .guide = u"Click any metric to pin/unpin it on your menu bar:"_s,
            .chip = info.chip,
            .thermalState = info.thermalState,
            .thermalRole = MetricScale::temperatureRole(presentReading(info.avgSocTemp)),
            .loads = pinnable(loadTiles(info, wording), pinned),
            .thermals = pinnable(thermalTiles(info, wording), pinned),
            .fleet = fleetRow(pinned),
            .facts = facts(info),
            .sensorsCaption = u"Individual Thermal Sensors ("_s + QString::number(info.sensors.size()) + u')',
            .sensorsSymbol = showingAllSensors ? u"chevron.up"_s : u"chevron.down"_s,
            .showsSensors = showingAllSensors,
            .sensors = sensorRows(info.sensors)};
}

} // namespace tarnwick
