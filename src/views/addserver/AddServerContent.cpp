#include "AddServerContent.h"

#include "controls/DisplayText.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

QString trimmed(const QString& field) {
    return SSHConfigParser::withoutBlanks(field).toString();
}

bool isThisComputer(const QString& host) {
    return host == "localhost"_L1 || host == "127.0.0.1"_L1;
}

} // namespace

DetectedHost detectedHost(const SSHConfigHost& host, bool isAdded) {
    return {.alias = displayText(host.alias),
            .address = displayText(host.user + u'@' + host.hostname + u':' + QString::number(host.port)),
            .keyText = host.identityFile ? displayText(u"Key: "_s + *host.identityFile) : QString(),
            .isAdded = isAdded};
}

FleetIndex::FleetIndex(const QList<Server>& servers) {
    hosts_.reserve(servers.size());
    names_.reserve(servers.size());
    for (const Server& server : servers) {
        hosts_.insert(server.host);
        names_.insert(server.name);
    }
}

bool FleetIndex::contains(const SSHConfigHost& host) const {
    return hosts_.contains(host.hostname) || names_.contains(host.alias);
}

AddServerWords addServerWords(const SystemWords& words) {
    return {.nameCaption = u"A display name shown in the %1 list."_s.arg(words.bar),
            .keyCaption = u"Tarnwick uses your %1's SSH agent by default."_s.arg(words.computer)};
}

QString importCaption(qsizetype hostCount) {
    return u"Import from ~/.ssh/config (%1)"_s.arg(QString::number(hostCount));
}

bool canSaveForm(const UIState& form) {
    return !trimmed(form.newServerName()).isEmpty() && !trimmed(form.newServerHost()).isEmpty();
}

Server serverFromForm(const UIState& form) {
    Server server;
    server.id = QUuid::createUuid();
    server.name = trimmed(form.newServerName());
    server.host = trimmed(form.newServerHost());
    server.user = trimmed(form.newServerUser());
    if (server.user.isEmpty())
        server.user = u"root"_s;
    server.port = SSHConfigParser::port(SSHConfigParser::withoutBlanks(form.newServerPort()));
    server.isLocal = isThisComputer(server.host);
    server.dockerEnabled = form.newServerDocker();
    if (const QString key = trimmed(form.newServerKey()); !key.isEmpty())
        server.customSshKeyPath = key;
    return server;
}

Server serverFromHost(const SSHConfigHost& host) {
    Server server = SSHConfigParser::newServer(host);
    server.isLocal = isThisComputer(host.hostname);
    return server;
}

} // namespace tarnwick
