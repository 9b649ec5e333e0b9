#pragma once

#include "Instant.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace tarnwick {

/// One file that is read whole at start and replaced whole later. What could not be read is never lost: it is moved
/// aside before anything is written in its place.
class StoredFile {
public:
    explicit StoredFile(const QString& path) : path_(path) {}

    /// The content; absent when the file is missing or cannot be read (access, a folder or a pipe of that name).
    [[nodiscard]] std::optional<QByteArray> read();
    /// Says that the content cannot be decoded: the next write moves the file aside first.
    void reject() { moveAsideFirst_ = true; }
    /// Replaces the file in one step: a reader, even after a crash, finds the old content or the new. Only its owner
    /// may read the file. False when it failed; the old file is then unchanged. A file that is moved aside is named
    /// after `now`: `PATH.unreadable-YYYYMMDDTHHMMSSZ`, with "-2" and so on when that name is taken.
    bool write(const QByteArray& content, Instant now);

private:
    [[nodiscard]] bool moveAside(Instant now) const;

    QString path_;
    bool moveAsideFirst_ = false;
};

} // namespace tarnwick
