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

/// What ssh does with the alias alone.
QString hint(const SSHAliasMeaning& meaning) {
    if (isThisComputer(meaning.host.hostname))
        return {}; // a server with that host would be this computer
    switch (meaning.lost) {
    case SSHAliasMeaning::Lost::nothing:
        break;
    case SSHAliasMeaning::Lost::jumpHost:
        return u"Uses a jump host, which ssh takes for the alias alone."_s;
    case SSHAliasMeaning::Lost::proxyCommand:
        return u"Uses a proxy command, which ssh runs for the alias alone."_s;
    case SSHAliasMeaning::Lost::address:
        return u"For the alias, ssh connects to another address."_s;
    case SSHAliasMeaning::Lost::login:
        return u"For the alias, ssh logs in as %1 on port %2."_s.arg(meaning.host.user,
                                                                     QString::number(meaning.host.port));
    case SSHAliasMeaning::Lost::keys:
        return u"Uses keys that ssh takes for the alias alone."_s;
    case SSHAliasMeaning::Lost::settings:
        return u"Has settings that ssh takes for the alias alone."_s;
    }
    return {};
}

} // namespace

DetectedHost detectedHost(const SSHConfigHost& host, bool isAdded, const SSHAliasMeaning& meaning) {
    const QString address = host.user + u'@' + host.hostname + u':' + QString::number(host.port);
    DetectedHost row{.alias = displayText(host.alias),
                     .address = displayText(address),
                     .keyText = host.identityFile ? displayText(u"Key: "_s + *host.identityFile) : QString(),
                     .hint = displayText(hint(meaning)),
                     .addAlias = {},
                     .description = displayText(address),
                     .isAdded = isAdded};
    if (!row.hint.isEmpty()) {
        row.addAlias = displayText(u"Add with \"%1\" as the host"_s.arg(meaning.host.hostname));
        row.description += u". "_s + row.hint;
    }
    return row;
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

bool FleetIndex::reachesByAlias(const SSHConfigHost& host) const {
    return hosts_.contains(SSHAlias::name(host));
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
