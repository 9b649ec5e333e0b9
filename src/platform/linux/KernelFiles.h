#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QByteArrayView>
#include <QString>
#include <QStringList>

#include <optional>

namespace tarnwick {

/// A whole small file of /proc or /sys, without white space around it; empty when it cannot be read.
[[nodiscard]] QByteArray readSmallFile(const QString& path);

/// What follows `key` on the first line that begins with it, without white space around it; empty when there is none.
[[nodiscard]] QByteArrayView restOfLine(QByteArrayView text, QByteArrayView key);

/// The value of a shell-style assignment (os-release, machine-info), unquoted; empty when there is none. `key` ends
/// in "=".
[[nodiscard]] QString assignedValue(QByteArrayView text, QByteArrayView key);

/// The number behind `key` on the first line that begins with it; absent when something else comes first.
[[nodiscard]] std::optional<quint64> numberAfter(QByteArrayView text, QByteArrayView key);

/// The number that the text begins with, and the text moved past it; absent when something else comes first.
[[nodiscard]] std::optional<quint64> takeNumber(QByteArrayView& text);

/// The texts of a property at the top of the device tree. `root` is the folder that holds proc, ending in "/".
[[nodiscard]] QByteArrayList deviceTreeTexts(const QString& root, const QString& property);

/// "x86_64": as the kernel says below `root`, else as it is here.
[[nodiscard]] QByteArray architecture(const QString& root);

/// The folders in a folder that match a wildcard pattern, by the numbers they end in: hwmon2 before hwmon10.
[[nodiscard]] QStringList foldersByNumber(const QString& folder, const QString& pattern);

} // namespace tarnwick
