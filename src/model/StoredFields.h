#pragma once

#include "AppSettings.h"
#include "JsonFields.h"
#include "Server.h"

#include <tuple>

namespace tarnwick {

// The fields of each record that is stored, for reading, writing and merging.

inline constexpr std::tuple containerFields =
    std::tuple_cat(containerFieldsBeforePorts, std::tuple{required(QLatin1StringView("ports"), &ContainerInfo::ports)});

inline constexpr std::tuple metricsFields{
    required(QLatin1StringView("cpuPercent"), &ServerMetrics::cpuPercent),
    optional(QLatin1StringView("gpuPercent"), &ServerMetrics::gpuPercent),
    required(QLatin1StringView("memoryUsedMB"), &ServerMetrics::memoryUsedMB),
    required(QLatin1StringView("memoryTotalMB"), &ServerMetrics::memoryTotalMB),
    required(QLatin1StringView("diskUsedGB"), &ServerMetrics::diskUsedGB),
    required(QLatin1StringView("diskTotalGB"), &ServerMetrics::diskTotalGB),
    required(QLatin1StringView("uptimeString"), &ServerMetrics::uptimeString),
    required(QLatin1StringView("loadAvg1m"), &ServerMetrics::loadAvg1m),
    required(QLatin1StringView("containers"), &ServerMetrics::containers, containerFields),
    required(QLatin1StringView("latencyMs"), &ServerMetrics::latencyMs),
    required(QLatin1StringView("lastChecked"), &ServerMetrics::lastChecked),
    optional(QLatin1StringView("errorMessage"), &ServerMetrics::errorMessage),
};

inline constexpr std::tuple serverFields{
    required(QLatin1StringView("id"), &Server::id),
    required(QLatin1StringView("name"), &Server::name),
    required(QLatin1StringView("host"), &Server::host),
    required(QLatin1StringView("user"), &Server::user),
    required(QLatin1StringView("port"), &Server::port),
    required(QLatin1StringView("isLocal"), &Server::isLocal),
    required(QLatin1StringView("dockerEnabled"), &Server::dockerEnabled),
    optional(QLatin1StringView("customSshKeyPath"), &Server::customSshKeyPath),
    required(QLatin1StringView("isEnabled"), &Server::isEnabled),
    optional(QLatin1StringView("metrics"), &Server::metrics, metricsFields),
};

inline constexpr std::tuple settingsFields{
    optional(QLatin1StringView("refreshIntervalSeconds"), &AppSettings::refreshIntervalSeconds),
    optional(QLatin1StringView("alertDiskThresholdPercent"), &AppSettings::alertDiskThresholdPercent),
    optional(QLatin1StringView("alertRamThresholdPercent"), &AppSettings::alertRamThresholdPercent),
    optional(QLatin1StringView("showMenuBarLabel"), &AppSettings::showMenuBarLabel),
    optional(QLatin1StringView("pinnedMenuBarItems"), &AppSettings::pinnedMenuBarItems),
    optional(QLatin1StringView("soundAlerts"), &AppSettings::soundAlerts),
    optional(QLatin1StringView("launchAtLogin"), &AppSettings::launchAtLogin),
    optional(QLatin1StringView("firstLaunchDate"), &AppSettings::firstLaunchDate),
    optional(QLatin1StringView("hasCompletedOnboarding"), &AppSettings::hasCompletedOnboarding),
    optional(QLatin1StringView("shareConnections"), &AppSettings::shareConnections),
};

} // namespace tarnwick
