#include "UserHome.h"

#include "Files.h"

#include <QLibrary>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// The text of /etc/passwd with `home` as the home folder of this process's user.
QByteArray passwordDatabase(const QByteArray& home) {
    QByteArrayList lines = readFile(u"/etc/passwd"_s).split('\n');
    for (QByteArray& line : lines) {
        QByteArrayList fields = line.split(':');
        if (fields.size() == 7 && fields[2].toUInt() == ::getuid()) {
            fields[5] = home;
            line = fields.join(':');
        }
    }
    return lines.join('\n');
}

} // namespace

UserHome::UserHome() {
    if (!QLibrary(u"libnss_wrapper.so"_s).load()) {
        error_ = u"libnss_wrapper.so is missing: install libnss-wrapper"_s;
        return;
    }
    const QByteArray home = QFile::encodeName(folder());
    const QString database = folder_.filePath(u".passwd"_s);
    if (!writeFile(database, passwordDatabase(home)) || !QDir(folder()).mkdir(u".ssh"_s)) {
        error_ = u"Cannot write to %1"_s.arg(folder());
        return;
    }
    qputenv("HOME", home);
    qputenv("NSS_WRAPPER_PASSWD", QFile::encodeName(database));
    qputenv("NSS_WRAPPER_GROUP", "/etc/group");
    qputenv("LD_PRELOAD", "libnss_wrapper.so");
}

bool UserHome::writeSshFile(const QString& name, const QByteArray& contents) const {
    return writeFile(folder_.filePath(u".ssh/"_s + name), contents);
}

} // namespace tarnwick
