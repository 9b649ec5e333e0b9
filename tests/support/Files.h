#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace tarnwick {

/// The content of a file; empty when it cannot be read.
[[nodiscard]] inline QByteArray readFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Writes a file for its owner alone, and the folders above it. A file that is there already is written in place. False
/// when that failed.
[[nodiscard]] inline bool writeFile(const QString& path, QByteArrayView content) {
    QFile file(path);
    return QDir().mkpath(QFileInfo(path).path()) && file.open(QIODevice::WriteOnly) &&
           file.write(content.data(), content.size()) == content.size() &&
           file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
}

} // namespace tarnwick
