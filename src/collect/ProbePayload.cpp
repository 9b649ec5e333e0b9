#include "ProbePayload.h"

#include "JsonReader.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr std::tuple rawContainer =
    std::tuple_cat(containerFieldsBeforePorts, std::tuple{optional("ports"_L1, &ContainerInfo::ports)});

/// The keys of the probe line, in the units of the fields that they fill. The remote script prints no "gpu".
constexpr std::tuple rawPayload{
    optional("cpu"_L1, &ServerMetrics::cpuPercent),
    optional("gpu"_L1, &ServerMetrics::gpuPercent),
    optional("mem_used"_L1, &ServerMetrics::memoryUsedMB),
    optional("mem_total"_L1, &ServerMetrics::memoryTotalMB),
    optional("disk_used"_L1, &ServerMetrics::diskUsedGB),
    optional("disk_total"_L1, &ServerMetrics::diskTotalGB),
    optional("load"_L1, &ServerMetrics::loadAvg1m),
    optional("uptime"_L1, &ServerMetrics::uptimeString),
    optional("containers"_L1, &ServerMetrics::containers, rawContainer),
};

} // namespace

ServerMetrics parseMetrics(const QByteArray& bytes, qint64 latencyMs) {
    auto decoded = JsonReader::decode<ServerMetrics>(bytes, rawPayload, JsonReader::Rules::strict);
    if (const auto* error = std::get_if<DecodingError>(&decoded))
        return ServerMetrics::offline(u"Failed to parse metrics: "_s + error->description);
    ServerMetrics metrics = std::get<ServerMetrics>(std::move(decoded));
    for (ContainerInfo& row : metrics.containers)
        row = ContainerInfo(row.id, row.name, row.image, row.status, row.state, row.ports);
    metrics.latencyMs = latencyMs;
    metrics.lastChecked = Instant::now();
    return metrics;
}

} // namespace tarnwick
