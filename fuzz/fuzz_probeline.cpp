// What a monitored host answers, from the bytes of its ssh client to the texts of its card. Input: standard output,
// 0xFF, the exit status as one byte and standard error.

#include "AlertRules.h"
#include "Coding.h"
#include "Fuzz.h"
#include "SSHMetricsCollector.h"
#include "card/ServerCardContent.h"
#include "linux/LinuxWords.h"

#include <cmath>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestText = 301;    // of a name or an error, with its "…"
constexpr qsizetype longestFigure = 1000; // the largest double has 309 digits

void requireShownSafely(const Server& server) {
    const ServerCardContent card = serverCardContent(server, {.isExpanded = true}, linuxWords);
    QStringList texts{card.name, card.address, card.errorText};
    for (const ContainerRowContent& row : card.containers)
        texts << row.name << row.image << row.status;
    for (const QString& text : texts)
        require(text.size() <= longestText && !hasControls(text), "what a card shows is short and has no controls");
    for (const MetricBarContent& bar : card.bars) {
        require(bar.fraction >= 0 && bar.fraction <= 1, "a bar is filled between nothing and all");
        require(bar.detail.size() <= longestFigure, "a figure is short");
    }
    require(card.hasFailed == server.metrics->errorMessage.has_value(), "a card says when its server failed");
}

void requirePlausible(const ServerMetrics& metrics) {
    for (const double percent : {metrics.memoryPercent(), metrics.diskPercent()})
        require(percent >= 0 && percent <= 100, "a share is 0 to 100 %");
    for (const double figure : {metrics.cpuPercent, metrics.gpuPercent.value_or(0), metrics.loadAvg1m})
        require(std::isfinite(figure), "a figure is finite");
    for (const ContainerInfo& container : metrics.containers)
        require(!container.name.startsWith(u'/') && !container.name.endsWith(u'/'), "a name has no outer slashes");
    require(metrics.latencyMs >= 0, "latency is not negative");
    if (!metrics.errorMessage)
        return;
    require(!metrics.errorMessage->isEmpty(), "a failure has a reason");
    require(metrics.containers.isEmpty() && metrics.memoryTotalMB == 0, "a failure has no figures");
    if (metrics.errorMessage->startsWith(u"Failed to parse metrics: "))
        require(metrics.errorMessage->size() < 120 && !hasControls(*metrics.errorMessage),
                "a reason is one short line");
}

void requireStored(const Server& server) {
    const auto json = encodeServers({server});
    require(json.has_value(), "whatever a host says can be saved");
    const auto decoded = decodeServers(*json);
    const auto* const servers = std::get_if<QList<Server>>(&decoded);
    require(servers != nullptr && *servers == QList{server}, "whatever is saved reads back as it was");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArrayList fields = fieldsOf(data, size, 2);
    const ProcessOutcome outcome{.end = ProcessOutcome::End::exited,
                                 .status = fields[1].isEmpty() ? 0 : fields[1].front() & 0xFF,
                                 .standardOutput = fields[0],
                                 .standardError = fields[1].mid(1)};
    Server server;
    server.name = QString::fromUtf8(fields[1]);
    for (const bool isLocal : {false, true}) {
        server.isLocal = isLocal;
        server.metrics =
            isLocal ? SSHMetricsCollector::localMetrics(outcome, {}) : SSHMetricsCollector::remoteMetrics(outcome);
        requirePlausible(*server.metrics);
        requireStored(server);
        requireShownSafely(server);
        require(alertsFor(server, *server.metrics, {}).size() <= 2, "a result raises two alerts at most");
    }
    return 0;
}
