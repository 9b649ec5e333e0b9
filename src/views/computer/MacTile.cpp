#include "MacTile.h"

#include "FixedPoint.h"
#include "MetricScale.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// What takes the place of a figure that this computer cannot give.
const auto noFigure = u"--"_s;

MacTile loadTile(MenuBarItem item, const QString& title, std::optional<double> percent, int decimals,
                 const QString& subtitle) {
    return {.title = title,
            .value = percent ? fixedPoint(*percent, decimals) + u'%' : noFigure,
            .subtitle = subtitle,
            .role = MetricScale::loadRole(percent),
            .item = item};
}

MacTile thermalTile(MenuBarItem item, const QString& title, std::optional<double> celsius, const QString& subtitle) {
    return {.title = title,
            .value = celsius ? fixedPoint(*celsius, 1) + u"\u00b0C"_s : noFigure,
            .subtitle = subtitle,
            .role = MetricScale::temperatureRole(celsius),
            .item = item};
}

/// "10 Cores" from "10 Cores (4 Performance + 6 Efficiency)": the text up to its first space, and " Cores".
QString coreCountText(const QString& cpuCores) {
    return cpuCores.section(u' ', 0, 0) + u" Cores"_s;
}

/// "11.0/16GB"
QString ramAmountText(const MacHardwareInfo& info) {
    return fixedPoint(info.ramUsedGB, 1) + u'/' + fixedPoint(info.ramTotalGB, 0) + u"GB"_s;
}

} // namespace

MacTileGroup loadTiles(const MacHardwareInfo& info, const MacTileWording& wording, const SystemWords& words) {
    using enum MenuBarItem;
    return {.symbol = u"cpu"_s,
            .role = ColorRole::Role::Blue,
            .heading = u"Live System Utilization"_s,
            .tiles = {loadTile(cpuUsage, u"CPU Usage"_s, info.cpuUsagePercent, wording.cpuDecimals,
                               coreCountText(info.cpuCores)),
                      loadTile(gpuUsage, u"GPU Usage"_s, info.gpuUsagePercent, 0, (words.*wording.gpu).toString()),
                      loadTile(ramUsage, words.ramTitle.toString(), info.ramUsagePercent, 0, ramAmountText(info))}};
}

MacTileGroup thermalTiles(const MacHardwareInfo& info, const MacTileWording& wording, const SystemWords& words) {
    using enum MenuBarItem;
    return {
        .symbol = u"thermometer.medium"_s,
        .role = ColorRole::Role::Orange,
        .heading = u"Live Thermals & Sensors"_s,
        .tiles = {thermalTile(socTemp, u"%1 Average"_s.arg(words.processor), presentReading(info.avgSocTemp),
                              wording.processor.toString()),
                  thermalTile(peakTemp, u"Peak Core"_s, presentReading(info.peakSocTemp), wording.hotspot.toString()),
                  thermalTile(ssdTemp, u"SSD Storage"_s, info.ssdTemp, words.storage.toString())}};
}

} // namespace tarnwick
