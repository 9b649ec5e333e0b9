#include "Coding.h"

#include "JsonReader.h"
#include "JsonWriter.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr std::tuple containerFields =
    std::tuple_cat(containerFieldsBeforePorts, std::tuple{required("ports"_L1, &ContainerInfo::ports)});

constexpr std::tuple metricsFields{
    required("cpuPercent"_L1, &ServerMetrics::cpuPercent),
    optional("gpuPercent"_L1, &ServerMetrics::gpuPercent),
    required("memoryUsedMB"_L1, &ServerMetrics::memoryUsedMB),
    required("memoryTotalMB"_L1, &ServerMetrics::memoryTotalMB),
    required("diskUsedGB"_L1, &ServerMetrics::diskUsedGB),
    required("diskTotalGB"_L1, &ServerMetrics::diskTotalGB),
    required("uptimeString"_L1, &ServerMetrics::uptimeString),
    required("loadAvg1m"_L1, &ServerMetrics::loadAvg1m),
    required("containers"_L1, &ServerMetrics::containers, containerFields),
    required("latencyMs"_L1, &ServerMetrics::latencyMs),
    required("lastChecked"_L1, &ServerMetrics::lastChecked),
    optional("errorMessage"_L1, &ServerMetrics::errorMessage),
};

constexpr std::tuple serverFields{
    required("id"_L1, &Server::id),
    required("name"_L1, &Server::name),
    required("host"_L1, &Server::host),
    required("user"_L1, &Server::user),
    required("port"_L1, &Server::port),
    required("isLocal"_L1, &Server::isLocal),
    required("dockerEnabled"_L1, &Server::dockerEnabled),
    optional("customSshKeyPath"_L1, &Server::customSshKeyPath),
    required("isEnabled"_L1, &Server::isEnabled),
    optional("metrics"_L1, &Server::metrics, metricsFields),
};

constexpr std::tuple settingsFields{
    optional("refreshIntervalSeconds"_L1, &AppSettings::refreshIntervalSeconds),
    optional("alertDiskThresholdPercent"_L1, &AppSettings::alertDiskThresholdPercent),
    optional("alertRamThresholdPercent"_L1, &AppSettings::alertRamThresholdPercent),
    optional("showMenuBarLabel"_L1, &AppSettings::showMenuBarLabel),
    optional("pinnedMenuBarItems"_L1, &AppSettings::pinnedMenuBarItems),
    optional("soundAlerts"_L1, &AppSettings::soundAlerts),
    optional("launchAtLogin"_L1, &AppSettings::launchAtLogin),
    optional("firstLaunchDate"_L1, &AppSettings::firstLaunchDate),
    optional("hasCompletedOnboarding"_L1, &AppSettings::hasCompletedOnboarding),
};

} // namespace

Decoded<QList<Server>> decodeServers(const QByteArray& json) {
    return JsonReader::decodeList<Server>(json, serverFields);
}

std::optional<QByteArray> encodeServers(const QList<Server>& servers) {
    return JsonWriter::encode(servers, serverFields);
}

Decoded<AppSettings> decodeSettings(const QByteArray& json) {
    return JsonReader::decode<AppSettings>(json, settingsFields, JsonReader::Rules::lenient);
}

std::optional<QByteArray> encodeSettings(const AppSettings& settings) {
    return JsonWriter::encode(settings, settingsFields);
}

} // namespace tarnwick
