#include "MacInfoContent.h"

#include "FixedPoint.h"
#include "MetricScale.h"
#include "PinCaptions.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr MacTileWording wording{
    .cpuDecimals = 0, .gpu = &SystemWords::gpu, .processor = u"CPU & GPU Die", .hotspot = u"Hotspot Core"};

/// The tile, completed with the texts that depend on whether its item is pinned.
MacTile pinnable(MacTile tile, const MenuBarItemSet& pinned, const SystemWords& words) {
    tile.isPinned = pinned.contains(tile.item);
    tile.help =
        (tile.isPinned ? u"Click to remove %1 from %2"_s : u"Click to add %1 to %2"_s).arg(tile.title, words.bar);
    if (!tile.isPinned)
        tile.hint = u"Pin to %1 +"_s.arg(words.barOnTile);
    return tile;
}

MacTileGroup pinnable(MacTileGroup group, const MenuBarItemSet& pinned, const SystemWords& words) {
    for (MacTile& tile : group.tiles)
        tile = pinnable(std::move(tile), pinned, words);
    return group;
}

FleetPinRow fleetRow(const MenuBarItemSet& pinned, const SystemWords& words) {
    const bool isPinned = pinned.contains(MenuBarItem::serverStatus);
    return {.title = title(MenuBarItem::serverStatus, pinWords(words)),
            .example = previewExample(MenuBarItem::serverStatus),
            .symbol = isPinned ? u"checkmark.circle.fill"_s : u"circle"_s,
            .isPinned = isPinned};
}

QList<MacFact> facts(const MacHardwareInfo& info, const SystemWords& words) {
    QList<MacFact> facts{{u"sparkle"_s, u"Chip"_s, info.chip},
                         {u"cpu"_s, u"CPU Cores"_s, info.cpuCores},
                         {u"square.grid.2x2"_s, u"GPU Cores"_s, info.gpuCores},
                         {u"memorychip"_s, words.memoryTitle.toString(), info.memoryString},
                         {u"desktopcomputer"_s, u"Model Number"_s, info.modelIdentifier},
                         {words.systemSymbol.toString(), u"OS Version"_s, info.osBuild},
                         {u"terminal"_s, u"Kernel"_s, info.kernelVersion},
                         {u"clock"_s, u"System Uptime"_s, info.uptimeString}};
    facts.removeIf([](const MacFact& fact) { return fact.value.isEmpty(); });
    return facts;
}

QList<MacSensorRow> sensorRows(const QList<MacThermalSensor>& sensors, const SystemWords& words) {
    QList<MacSensorRow> rows;
    rows.reserve(sensors.size());
    for (const MacThermalSensor& sensor : sensors) {
        const bool isDie = sensor.category == ThermalCategory::socDie;
        rows += {sensor.name, isDie ? words.processorDie.toString() : sensor.category,
                 fixedPoint(sensor.tempCelsius, 1) + u" \u00b0C"_s, MetricScale::temperatureRole(sensor.tempCelsius)};
    }
    return rows;
}

MacTileGroup charted(MacTileGroup group, const ServerTrend* trend) {
    for (MacTile& tile : group.tiles)
        if (tile.item == MenuBarItem::cpuUsage)
            tile.trend = figureTrend(trend, TrendFigure::cpu);
        else if (tile.item == MenuBarItem::ramUsage)
            tile.trend = figureTrend(trend, TrendFigure::memory);
    return group;
}

} // namespace

QString machineHeading(const MacHardwareInfo& info) {
    return info.modelName + u" ("_s + info.chip + u')';
}

QString machineIdentity(const MacHardwareInfo& info) {
    return info.modelIdentifier + u" \u2022 "_s + info.osVersion;
}

MacInfoContent macInfoContent(const MacHardwareInfo& info, const MenuBarItemSet& pinned, bool showingAllSensors,
                              const SystemWords& words, const ServerTrend* trend) {
    return {.heading = machineHeading(info),
            .identity = machineIdentity(info),
            .guide = u"Click any metric to pin/unpin it on your %1:"_s.arg(words.bar),
            .chip = info.chip,
            .thermalState = info.thermalState,
            .thermalRole = MetricScale::temperatureRole(presentReading(info.avgSocTemp)),
            .loads = pinnable(charted(loadTiles(info, wording, words), trend), pinned, words),
            .thermals = pinnable(thermalTiles(info, wording, words), pinned, words),
            .fleet = fleetRow(pinned, words),
            .facts = facts(info, words),
            .sensorsCaption = u"Individual Thermal Sensors ("_s + QString::number(info.sensors.size()) + u')',
            .sensorsSymbol = showingAllSensors ? u"chevron.up"_s : u"chevron.down"_s,
            .showsSensors = showingAllSensors,
            .sensors = sensorRows(info.sensors, words)};
}

} // namespace tarnwick
