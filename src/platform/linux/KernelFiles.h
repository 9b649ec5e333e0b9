#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringList>

namespace tarnwick {

/// A whole small file of /proc or /sys, without white space around it; empty when it cannot be read.
[[nodiscard]] QByteArray readSmallFile(const QString& path);

/// What follows `key` on the first line that begins with it, without white space around it; empty when there is none.
[[nodiscard]] QByteArrayView restOfLine(QByteArrayView text, QByteArrayView key);

/// The value of a shell-style assignment (os-release, machine-info), unquoted; empty when there is none. `key` ends
/// in "=".
[[nodiscard]] QString assignedValue(QByteArrayView text, QByteArrayView key);

/// The folders in a folder that match a wildcard pattern, by the numbers they end in: hwmon2 before hwmon10.
[[nodiscard]] QStringList foldersByNumber(const QString& folder, const QString& pattern);

} // namespace tarnwick
