#pragma once

#include <QString>

#include <optional>

namespace tarnwick {

/// What the process information says, as it says it.
struct ProcessInformation {
    qint64 majorVersion = 0;
    qint64 minorVersion = 0;
    QString versionText;     ///< "Version 14.5 (Build 23F79)"
    qint64 thermalState = 0; ///< 0: nominal, 1: fair, 2: serious, 3: critical
};

/// The readings that only Foundation gives, which is reached from Objective-C alone. Any thread.
namespace FoundationReadings {

[[nodiscard]] ProcessInformation processInformation();
/// The name that the user gave the computer; absent when the system has none.
[[nodiscard]] std::optional<QString> computerName();

} // namespace FoundationReadings

} // namespace tarnwick
