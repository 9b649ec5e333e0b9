// ~/.ssh/config, and the ssh command line of the servers that come from it.

#include "Coding.h"
#include "Fuzz.h"
#include "SSHAlias.h"
#include "SSHConfigParser.h"
#include "SSHMetricsCollector.h"

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

bool isOneValue(const QString& text) {
    constexpr QStringView lineBreaks = u"\n\v\f\r\u0085\u2028\u2029";
    return SSHConfigParser::withoutBlanks(text) == text &&
           std::none_of(text.begin(), text.end(), [=](QChar c) { return lineBreaks.contains(c); });
}

/// As ssh reads its arguments: options with a value each, "--" or not, then the target and one command.
void requireInPlace(const QStringList& arguments, const SSHConfigHost& host) {
    qsizetype i = 0;
    QStringList key;
    while (i < arguments.size() && arguments[i].startsWith(u'-') && arguments[i] != u"--"_s) {
        require(QStringList({u"-o"_s, u"-p"_s, u"-i"_s}).contains(arguments[i]), "ssh gets our options alone");
        if (arguments[i] == u"-i"_s)
            key = {arguments[i + 1]};
        i += 2;
    }
    if (i < arguments.size() && arguments[i] == u"--"_s)
        ++i;
    require(i + 2 == arguments.size(), "a target and one command follow the options");
    require(arguments[i] == host.user + u'@' + host.hostname, "the target is the host's");
    require(key.isEmpty() != host.identityFile.has_value(), "a key is there where the host has one");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString home = u"/home/user"_s;
    const QString text = QString::fromUtf8(bytesOf(data, size));
    const QList<SSHConfigHost> hosts = SSHConfigParser::parse(text, home);
    const bool includes = SSHConfigParser::includes(text);
    require(!includes || text.contains(u"include"_s, Qt::CaseInsensitive), "an included file is named");
    require(SSHConfigParser::includes(text + u"\nInclude x"_s), "nothing hides a line of its own");
    QString again;
    for (const SSHConfigHost& host : hosts) {
        require(!host.alias.isEmpty() && !host.alias.contains(u'*'), "a pattern is no server");
        for (const QString& value : {host.alias, host.hostname, host.user, host.identityFile.value_or(u"-"_s)})
            require(!value.isEmpty() && isOneValue(value), "a value is one line without blanks around it");
        again += u"Host "_s + host.alias + u"\nPort "_s + QString::number(host.port) + u"\nUser "_s + host.user +
                 u"\nHostName "_s + host.hostname + u'\n';
        if (host.identityFile)
            again += u"IdentityFile "_s + *host.identityFile + u'\n';
        const Server server = SSHConfigParser::newServer(host);
        require(encodeServers({server}).has_value(), "every host can be saved");
        requireInPlace(SSHMetricsCollector::remoteProbeRequest(server).arguments, host);
        requireInPlace(SSHMetricsCollector::actionRequest(server, u"4f2a"_s, ContainerAction::restart).arguments, host);
        const QString name = SSHAlias::name(host);
        require(host.alias.contains(name) && !name.startsWith(u'-') && !name.contains(u'@') && !name.contains(u' '),
                "the name for ssh is one word of the alias, and no option");
    }
    require(SSHConfigParser::parse(again, home) == hosts, "hosts that are written down read back as they were");
    return 0;
}
