#pragma once

#include "Instant.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace tarnwick {

/// One file that is read whole at start and replaced whole later. What could not be read is never lost: it is moved
/// aside before anything is written in its place. A link that the user has made to a file of his own is followed. Any
/// thread, one at a time.
class StoredFile {
public:
    explicit StoredFile(const QString& path) : path_(path) {}

    /// The content; absent when the file is missing or cannot be read (access; a folder, a pipe, a link to nothing or
    /// somebody else's link of that name). Other users lose their access to it.
    [[nodiscard]] std::optional<QByteArray> read();
    /// Says that the content cannot be decoded: the next write moves the file aside first.
    void reject() { moveAsideFirst_ = true; }
    /// Replaces the file in one step: a reader, even after a crash, finds the old content or the new. Only its owner
    /// may read the file. False when it failed; the old file is then unchanged. A file that is moved aside is named
    /// after `now`: `PATH.unreadable-YYYYMMDDTHHMMSSZ`, with "-2" and so on when that name is taken.
    bool write(const QByteArray& content, Instant now);
    /// Removes what writers that were killed have left beside the file, when it is older than ten minutes: a younger
    /// one may be the file that another process is writing.
    void removeLeftovers() const;

private:
    [[nodiscard]] bool moveAside(Instant now) const;

    QString path_;
    bool moveAsideFirst_ = false;
};

} // namespace tarnwick
