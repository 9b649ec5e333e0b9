#include "PrivateFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>

#include <sys/stat.h>
#include <unistd.h>

namespace tarnwick {

bool makePrivateFolder(const QString& folder) {
    const mode_t umaskBefore = ::umask(S_IRWXG | S_IRWXO);
    const bool isThere = QDir().mkpath(folder);
    ::umask(umaskBefore);
    if (isThere && QFile::permissions(folder) & othersAccess)
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return isThere;
}

bool isOwnFile(const QString& path) {
    const QByteArray name = QFile::encodeName(path);
    const QByteArray folder = QFile::encodeName(QFileInfo(path).path());
    struct stat file {};
    struct stat target {};
    struct stat parent {};
    if (::lstat(name.constData(), &file) != 0 || ::stat(name.constData(), &target) != 0 ||
        ::stat(folder.constData(), &parent) != 0 || !S_ISREG(target.st_mode))
        return false;
    return !S_ISLNK(file.st_mode) || (file.st_uid == parent.st_uid && target.st_uid == parent.st_uid);
}

bool reachesDisk(int descriptor) {
    return ::fsync(descriptor) == 0 || errno == EINVAL; // EINVAL: the file system has nothing to wait for
}

} // namespace tarnwick
