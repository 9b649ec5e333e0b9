#include "SharedConnection.h"

#include "PrivateFolder.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>

#include <sys/un.h>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr int failureOfClient = 255; // ssh(1): else the status is the remote command's

/// While it listens for the first time, ssh appends a dot and 16 letters; a NUL ends the path.
constexpr qsizetype longestPath = sizeof(sockaddr_un::sun_path) - 18;

/// Empty where it cannot be made.
QString folder() {
    QString path = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) + u"/tarnwick"_s;
    return QFileInfo(path).isDir() || makePrivateFolder(path) ? path : QString();
}

} // namespace

QString SharedConnection::path(const Server& server) {
    const QString identity =
        QStringList{server.user, server.host, QString::number(server.port), server.customSshKeyPath.value_or(QString())}
            .join(QChar::Null);
    const QByteArray digest = QCryptographicHash::hash(identity.toUtf8(), QCryptographicHash::Sha256).toHex().first(20);
    const QString place = folder();
    QString path = place + u'/' + QString::fromLatin1(digest);
    const bool isPlain = std::ranges::none_of(path, [](QChar c) { return u"\"\\$%"_s.contains(c); });
    return !place.isEmpty() && isPlain && QFile::encodeName(path).size() <= longestPath ? path : QString();
}

QStringList SharedConnection::options(const QString& path, std::chrono::seconds lifetime) {
    // A host that has gone does not keep the client in the background for long.
    QStringList options;
    for (const QString& option :
         {u"ControlMaster=auto"_s, u"ControlPath=\"%1\""_s.arg(path), u"ControlPersist=%1"_s.arg(lifetime.count()),
          u"ServerAliveInterval=30"_s, u"ServerAliveCountMax=2"_s})
        options << u"-o"_s << option;
    return options;
}

bool SharedConnection::isLost(const ProcessOutcome& outcome) {
    return outcome.end == ProcessOutcome::End::timedOut ||
           (outcome.end == ProcessOutcome::End::exited && outcome.status == failureOfClient);
}

void SharedConnection::drop(const QString& path) {
    QFile::remove(path);
}

} // namespace tarnwick
