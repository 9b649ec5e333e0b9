#include "StandIns.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

bool write(const QString& path, QByteArrayView contents) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
           file.write(contents.data(), contents.size()) == contents.size() && file.flush();
}

} // namespace

QString StandIns::searchPath() const {
    return folder() + u":/usr/sbin:/usr/bin:/sbin:/bin"_s;
}

bool StandIns::add(const QString& name, const QByteArray& script) {
    const QString path = folder_.filePath(name);
    return write(path, script) && QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

bool StandIns::addRecording(const QString& name, const QByteArray& output) {
    return write(folder_.filePath(name + u".txt"_s), output) && add(name, "#!/bin/sh\nexec cat \"$0.txt\"\n");
}

bool StandIns::addDocker(const QByteArray& rows) {
    return install(u"docker"_s, u"containers.tsv"_s, rows);
}

bool StandIns::addDisk(int gibibytes, int percent) {
    return install(u"df"_s, u"disk"_s, u"%1 %2\n"_s.arg(gibibytes).arg(percent).toLatin1());
}

bool StandIns::addProcessor(const QByteArray& idle) {
    return install(u"top"_s, u"idle"_s, idle + '\n');
}

bool StandIns::install(const QString& name, const QString& file, const QByteArray& content) {
    const QString path = folder_.filePath(name);
    return write(folder_.filePath(file), content) &&
           (QFile::exists(path) || QFile::copy(QStringLiteral(TARNWICK_STAND_INS "/") + name, path));
}

QStringList StandIns::restarts() const {
    QFile file(folder_.filePath(u"restarts.txt"_s));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
}

} // namespace tarnwick
