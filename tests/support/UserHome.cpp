#include "UserHome.h"

#include <QDir>
#include <QFile>
#include <QLibrary>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// The text of /etc/passwd with `home` as the home folder of this process's user.
QByteArray passwordDatabase(const QByteArray& home) {
    QFile system(u"/etc/passwd"_s);
    if (!system.open(QIODevice::ReadOnly))
        return {};
    QByteArray text;
    while (!system.atEnd()) {
        QByteArrayList fields = system.readLine().split(':');
        if (fields.size() == 7 && fields[2].toUInt() == ::getuid())
            fields[5] = home;
        text += fields.join(':');
    }
    return text;
}

bool write(const QString& path, const QByteArray& contents) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(contents) == contents.size() &&
           file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
}

} // namespace

UserHome::UserHome() {
    if (!QLibrary(u"libnss_wrapper.so"_s).load()) {
        error_ = u"libnss_wrapper.so is missing: install libnss-wrapper"_s;
        return;
    }
    const QByteArray home = QFile::encodeName(folder());
    const QString database = folder_.filePath(u".passwd"_s);
    if (!write(database, passwordDatabase(home)) || !QDir(folder()).mkdir(u".ssh"_s)) {
        error_ = u"Cannot write to %1"_s.arg(folder());
        return;
    }
    set("HOME", home);
    set("NSS_WRAPPER_PASSWD", QFile::encodeName(database));
    set("NSS_WRAPPER_GROUP", "/etc/group");
    set("LD_PRELOAD", "libnss_wrapper.so");
}

UserHome::~UserHome() {
    for (const auto& [variable, value] : before_)
        value.isNull() ? qunsetenv(variable) : qputenv(variable, value);
}

void UserHome::set(const char* variable, const QByteArray& value) {
    before_[variable] = qgetenv(variable);
    qputenv(variable, value);
}

bool UserHome::writeSshFile(const QString& name, const QByteArray& contents) const {
    return write(folder_.filePath(u".ssh/"_s + name), contents);
}

} // namespace tarnwick
