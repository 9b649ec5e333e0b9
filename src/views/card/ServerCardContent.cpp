#include "ServerCardContent.h"

#include "FailureAdvice.h"
#include "FixedPoint.h"
#include "controls/DisplayText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

using enum ColorRole::Role;

ColorRole::Role statusRole(ServerHealthStatus status) {
    switch (status) {
    case ServerHealthStatus::healthy:
        return Green;
    case ServerHealthStatus::warning:
        return Orange;
    case ServerHealthStatus::critical:
    case ServerHealthStatus::offline:
        return Red;
    case ServerHealthStatus::checking:
        return Blue;
    }
    Q_UNREACHABLE();
}

QString usedOfTotal(double used, double total, double percent) {
    return fixedPoint(used, 1) + u" / "_s + fixedPoint(total, 1) + u" GB ("_s + fixedPoint(percent, 0) + u"%)"_s;
}

QList<MetricBarContent> metricBars(const Server& server, const ServerMetrics& metrics, const CardState& state,
                                   const SystemWords& words, const ServerTrend* trend) {
    constexpr double mebibytesPerGibibyte = 1024;
    QList<MetricBarContent> bars;
    bars += metricBarContent(u"CPU"_s, metrics.cpuPercent, fixedPoint(metrics.cpuPercent, 1) + u'%',
                             figureTrend(trend, TrendFigure::cpu));
    // The local probe prints 0 for a computer that has no such figure.
    if (server.isLocal ? state.gpuPercent : metrics.gpuPercent) {
        const double gpu = metrics.gpuPercent.value_or(state.gpuPercent.value_or(0));
        bars += metricBarContent(u"GPU"_s, gpu, fixedPoint(gpu, 1) + u'%' + words.figureOrigin.toString());
    }
    const double memory = metrics.memoryPercent();
    bars += metricBarContent(
        u"RAM"_s, memory,
        usedOfTotal(metrics.memoryUsedMB / mebibytesPerGibibyte, metrics.memoryTotalMB / mebibytesPerGibibyte, memory),
        figureTrend(trend, TrendFigure::memory));
    const double disk = metrics.diskPercent();
    bars += metricBarContent(u"DISK"_s, disk, usedOfTotal(metrics.diskUsedGB, metrics.diskTotalGB, disk),
                             figureTrend(trend, TrendFigure::disk));
    if (server.isLocal && state.avgSoc > 0) {
        bars += metricBarContent(u"TEMP"_s, std::min(state.avgSoc, 100.0),
                                 fixedPoint(state.avgSoc, 1) + u"\u00b0C"_s + words.figureOrigin.toString());
    }
    return bars;
}

void fillHeader(ServerCardContent& card, const Server& server, const CardState& state) {
    card.id = server.id;
    card.name = displayText(server.name);
    card.address = server.isLocal ? u"Local Machine"_s
                                  : displayText(server.user + u'@' + server.host + u':' + QString::number(server.port));
    card.isEnabled = server.isEnabled;
    card.isLocal = server.isLocal;
    card.isDragged = state.isDragged;
    if (server.isLocal && state.avgSoc > 0)
        card.temperatureText = fixedPoint(state.avgSoc, 0) + u"\u00b0C"_s;
    card.pauseSymbol = server.isEnabled ? u"pause.circle"_s : u"play.circle"_s;
    card.pauseRole = server.isEnabled ? Secondary : Green;
    card.pauseHelp = server.isEnabled ? u"Pause monitoring"_s : u"Resume monitoring"_s;
}

void fillContainers(ServerCardContent& card, const QList<ContainerInfo>& containers, const CardState& state) {
    if (containers.isEmpty())
        return;
    const auto running = std::ranges::count_if(containers, &ContainerInfo::isRunning);
    card.containersText = QString::number(running) + u" / "_s + QString::number(containers.size()) + u" Containers"_s;
    card.isExpanded = state.isExpanded;
    card.expandText = state.isExpanded ? u"Hide"_s : u"Show"_s;
    card.expandSymbol = state.isExpanded ? u"chevron.up.circle.fill"_s : u"chevron.down.circle.fill"_s;
    card.containers.reserve(containers.size());
    for (const ContainerInfo& container : containers)
        card.containers += containerRowContent(container, state.containers);
}

} // namespace

QString statusWord(const Server& server) {
    if (!server.isEnabled)
        return u"paused"_s;
    return rawValue(server.metrics ? server.metrics->status() : ServerHealthStatus::checking);
}

ServerCardContent serverCardContent(const Server& server, const CardState& state, const SystemWords& words,
                                    const ServerTrend* trend) {
    ServerCardContent card;
    fillHeader(card, server, state);
    card.statusWord = statusWord(server);
    if (!server.isEnabled) {
        card.notice = u"Monitoring paused. Click play icon to resume."_s;
        return card;
    }
    if (!server.metrics) {
        card.isChecking = true;
        card.notice = u"Checking..."_s;
        return card;
    }
    const ServerMetrics& metrics = *server.metrics;
    card.dotRole = statusRole(metrics.status());
    card.healthTrend = healthTrend(trend, QLocale::system());
    if (metrics.errorMessage) {
        card.hasFailed = true;
        card.errorText = displayText(*metrics.errorMessage);
        card.errorAdvice = failureAdvice(*metrics.errorMessage);
        return card;
    }
    card.latencyText = QString::number(metrics.latencyMs) + u" ms"_s;
    card.latencyTrend = figureTrend(trend, TrendFigure::latency);
    card.bars = metricBars(server, metrics, state, words, trend);
    fillContainers(card, metrics.containers, state);
    card.hasHardwareRow = server.isLocal;
    return card;
}

} // namespace tarnwick
