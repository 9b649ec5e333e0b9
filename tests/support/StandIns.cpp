#include "StandIns.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr QByteArrayView dockerScript = R"sh(#!/bin/sh
here=${0%/*}
case $1 in
ps)
    [ "$2 $3" = "-a --format" ] || exit 125
    TEMPLATE=$4 awk -F '\t' '
        function fill(line, field, text,    at) {
            while (at = index(line, field))
                line = substr(line, 1, at - 1) text substr(line, at + length(field))
            return line
        }
        {
            line = fill(fill(fill(ENVIRON["TEMPLATE"], "{{.ID}}", $1), "{{.Names}}", $2), "{{.Image}}", $3)
            print fill(fill(fill(line, "{{.Status}}", $4), "{{.State}}", $5), "{{.Ports}}", $6)
        }' "$here/containers.tsv"
    ;;
restart)
    shift
    echo "$*" >> "$here/restarts.txt"
    if cut -f 1 "$here/containers.tsv" | grep -qxF -- "$1"; then
        echo "$1"
    else
        echo "Error response from daemon: No such container: $1" >&2
        exit 1
    fi
    ;;
*) exit 125 ;;
esac
)sh";

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
    return write(folder_.filePath(u"containers.tsv"_s), rows) && add(u"docker"_s, dockerScript.toByteArray());
}

QStringList StandIns::restarts() const {
    QFile file(folder_.filePath(u"restarts.txt"_s));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
}

} // namespace tarnwick
