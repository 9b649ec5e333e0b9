#include "StoredFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {
bool isTaken(const QString& path) {
    const QFileInfo info(path);
    return info.exists() || info.isSymLink(); // exists() is false for a link to nothing
}
} // namespace

std::optional<QByteArray> StoredFile::read() {
    const QFileInfo info(path_);
    if (!info.exists())
        return std::nullopt;
    QFile file(path_);
    // Opening a pipe would block until somebody writes to it.
    if (info.isFile() && file.open(QIODevice::ReadOnly)) {
        if (QByteArray content = file.readAll(); file.error() == QFileDevice::NoError)
            return content;
    }
    moveAsideFirst_ = true;
    return std::nullopt;
}

bool StoredFile::write(const QByteArray& content, Instant now) {
    if (moveAsideFirst_ && !moveAside(now))
        return false;
    moveAsideFirst_ = false;
    QSaveFile file(path_);
    return file.open(QIODevice::WriteOnly) && file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner) &&
           file.write(content) == content.size() && file.commit();
}

bool StoredFile::moveAside(Instant now) const {
    if (!isTaken(path_))
        return true;
    const QString base = path_ + u".unreadable-"_s + now.toDateTime().toUTC().toString(u"yyyyMMdd'T'HHmmss'Z'"_s);
    QString target = base;
    for (int n = 2; isTaken(target); ++n)
        target = base + u"-%1"_s.arg(n);
    return QFile::rename(path_, target);
}

} // namespace tarnwick
