#include "StatusItemLabel.h"

#include "FixedPoint.h"

#include <QStringList>

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QString temperatureText(std::optional<double> celsius) {
    return (celsius ? fixedPoint(*celsius, 0) : u"--"_s) + u"\u00b0C"_s;
}

QString loadText(const QString& name, double percent) {
    return name + u' ' + fixedPoint(percent, 0) + u'%';
}

QString partText(MenuBarItem item, FleetCounts counts, ThisComputer& computer) {
    switch (item) {
    case MenuBarItem::socTemp:
        return temperatureText(presentReading(computer.thermals(SensorGroup::processor).avgSoc));
    case MenuBarItem::peakTemp:
        return u"Peak "_s + temperatureText(presentReading(computer.thermals(SensorGroup::processor).peak));
    case MenuBarItem::ssdTemp:
        return u"SSD "_s + temperatureText(computer.thermals(SensorGroup::drives).ssd);
    case MenuBarItem::cpuUsage:
        return loadText(u"CPU"_s, computer.cpuPercent());
    case MenuBarItem::gpuUsage:
        return loadText(u"GPU"_s, computer.gpuPercent().value_or(0));
    case MenuBarItem::ramUsage:
        return loadText(u"RAM"_s, computer.ram().percent());
    case MenuBarItem::serverStatus:
        return fleetSummary(counts);
    }
    Q_UNREACHABLE();
}

QString symbolName(FleetCounts counts, const AppSettings& settings) {
    if (counts.online < counts.total)
        return u"exclamationmark.triangle.fill"_s;
    const MenuBarItemSet& pinned = settings.pinnedMenuBarItems;
    return labelSymbolName(pinned.empty() ? MenuBarItem::serverStatus : *pinned.begin());
}

} // namespace

FleetCounts fleetCounts(const QList<Server>& servers) {
    FleetCounts counts;
    for (const Server& server : servers) {
        if (!server.isEnabled)
            continue;
        ++counts.total;
        if (server.metrics && server.metrics->status() != ServerHealthStatus::offline)
            ++counts.online;
    }
    return counts;
}

QString fleetSummary(FleetCounts counts) {
    if (counts.total == 0)
        return u"0"_s;
    if (counts.online == 0)
        return u"ALL OFF"_s;
    if (counts.online == counts.total)
        return QString::number(counts.total) + u" OK"_s;
    return QString::number(counts.online) + u'/' + QString::number(counts.total) + u" OK"_s;
}

StatusItemLabel composeStatusItemLabel(const QList<Server>& servers, const AppSettings& settings,
                                       ThisComputer& computer) {
    const FleetCounts counts = fleetCounts(servers);
    QStringList parts;
    for (const MenuBarItem item : allMenuBarItems)
        if (settings.isPinned(item))
            parts += partText(item, counts, computer);
    const bool showsText = settings.showMenuBarLabel && !parts.isEmpty();
    return {symbolName(counts, settings), showsText ? u' ' + parts.join(u" \u2022 ") : QString()};
}

} // namespace tarnwick
