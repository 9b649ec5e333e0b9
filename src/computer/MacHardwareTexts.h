#pragma once

#include "KernelReadings.h"
#include "SystemWords.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace tarnwick {

/// Turns raw readings into the texts that describe the computer. Pure; any thread. Each text has a fixed default for an
/// absent reading.
namespace MacHardwareTexts {

/// A kernel value as text: up to the first NUL, trimmed. Absent for an absent or empty value.
[[nodiscard]] std::optional<QString> kernelText(const std::optional<QByteArray>& value);
/// A kernel value as a 4-byte integer; absent for any other width.
[[nodiscard]] std::optional<qint64> kernelInt(const std::optional<QByteArray>& value);
/// A kernel value as an 8-byte integer; absent for any other width.
[[nodiscard]] std::optional<qint64> kernelInt64(const std::optional<QByteArray>& value);

/// "10 Cores (4 Performance + 6 Efficiency)"; "8 Cores" for one kind of core, unless the words name it even then.
[[nodiscard]] QString coreText(std::optional<qint64> performance, std::optional<qint64> efficiency,
                               const SystemWords& words);
/// "16 GB Unified Memory"
[[nodiscard]] QString memoryText(std::optional<qint64> bytes, const SystemWords& words);
/// "macOS 14.5", "Debian GNU/Linux 12": name, major and minor version, where the system has them.
[[nodiscard]] QString systemText(const OperatingSystem& system);
/// "5h 7m" or "14d 6h 0m" from "kern.boottime" (seconds, microseconds) and the wall clock; "Unknown" for a value that
/// is absent or of another width. A clock set back before the boot counts as no time passed.
[[nodiscard]] QString uptimeText(const std::optional<QByteArray>& bootTime, qint64 wallClockSeconds);
[[nodiscard]] QString thermalStateText(ThermalState state);

} // namespace MacHardwareTexts

} // namespace tarnwick
