#include "StandIns.h"

#include "Files.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

QString StandIns::searchPath() const {
    return folder() + u":/usr/sbin:/usr/bin:/sbin:/bin"_s;
}

QProcessEnvironment StandIns::environment() const {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"PATH"_s, searchPath());
    return environment;
}

bool StandIns::add(const QString& name, const QByteArray& script) {
    const QString path = folder_.filePath(name);
    return writeFile(path, script) &&
           QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

bool StandIns::addRecording(const QString& name, const QByteArray& output) {
    return writeFile(folder_.filePath(name + u".txt"_s), output) && add(name, "#!/bin/sh\nexec cat \"$0.txt\"\n");
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
    return writeFile(folder_.filePath(file), content) &&
           (QFile::exists(path) || QFile::copy(QStringLiteral(TARNWICK_STAND_INS "/") + name, path));
}

QStringList StandIns::dockerActions() const {
    return QString::fromUtf8(readFile(folder_.filePath(u"actions.txt"_s))).split(u'\n', Qt::SkipEmptyParts);
}

} // namespace tarnwick
