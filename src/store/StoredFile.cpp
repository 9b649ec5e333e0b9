#include "StoredFile.h"

#include "PrivateFolder.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr QFileDevice::Permissions ownerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

bool isTaken(const QString& path) {
    const QFileInfo info(path);
    return info.exists() || info.isSymLink(); // exists() is false for a link to nothing
}

/// Whether QSaveFile may have chosen these letters for a file that is not whole yet. It takes any six, but one with
/// capitals in the midst is hardly a word, such as the "backup" that somebody appends to a copy of his own.
bool isRandom(QStringView letters) {
    const auto isUpper = [](QChar c) {
        return c >= u'A' && c <= u'Z';
    };
    const auto isLower = [](QChar c) {
        return c >= u'a' && c <= u'z';
    };
    return letters.size() == 6 && std::ranges::all_of(letters, [&](QChar c) { return isUpper(c) || isLower(c); }) &&
           std::ranges::any_of(letters, isLower) && std::ranges::any_of(letters.sliced(1), isUpper);
}

} // namespace

std::optional<QByteArray> StoredFile::read() {
    moveAsideFirst_ = false;
    if (!isTaken(path_))
        return std::nullopt;
    QFile file(path_);
    // Opening a pipe would block until somebody writes to it.
    if (isOwnFile(path_) && file.open(QIODevice::ReadOnly)) {
        if (file.permissions() & othersAccess)
            file.setPermissions(ownerOnly);
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
    // commit() looks neither at what the last of the buffer met, nor at whether the disk took it: a full one would
    // leave a part of the file in its place.
    return file.open(QIODevice::WriteOnly) && file.setPermissions(ownerOnly) && file.write(content) == content.size() &&
           file.flush() && reachesDisk(file.handle()) && file.commit();
}

void StoredFile::removeLeftovers() const {
    const QFileInfo file(path_);
    const QFileInfo written(file.isSymLink() ? file.symLinkTarget() : path_);
    const QFileInfo folder(written.path());
    const QDateTime old = QDateTime::currentDateTime().addSecs(-600);
    const QFileInfoList candidates =
        QDir(folder.filePath())
            .entryInfoList({written.fileName() + u".??????"_s}, QDir::Files | QDir::Hidden | QDir::NoSymLinks);
    for (const QFileInfo& candidate : candidates)
        if (isRandom(candidate.suffix()) && candidate.lastModified() < old && candidate.ownerId() == folder.ownerId())
            QFile::remove(candidate.filePath());
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
