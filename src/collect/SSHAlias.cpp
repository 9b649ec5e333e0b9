#include "SSHAlias.h"

#include "SSHMetricsCollector.h"
#include "TildeExpansion.h"

#include <QFile>
#include <QMultiHash>

#include <algorithm>
#include <cerrno>
#include <vector>

#include <pwd.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace tarnwick {

namespace {

using Lost = SSHAliasMeaning::Lost;
/// The values of each keyword.
using Settings = QMultiHash<QString, QString>;

constexpr std::chrono::seconds timeLimit = 5s; // ssh may look names up, and run the commands of `Match exec`
constexpr qint64 outputLimit = 256LL * 1024;

struct Keyword {
    QLatin1StringView name;
    Lost lost;
};

/// The settings that decide which host ssh reaches and whether that lets it in, the most telling one first. Others
/// (forwarding, terminals, keep-alives) do no more for a probe by the alias than by the address.
constexpr Keyword keywords[] = {
    {"proxyjump"_L1, Lost::jumpHost},
    {"proxycommand"_L1, Lost::proxyCommand},
    {"hostname"_L1, Lost::address},
    {"user"_L1, Lost::login},
    {"port"_L1, Lost::login},
    {"identityfile"_L1, Lost::keys},
    {"certificatefile"_L1, Lost::keys},
    {"identityagent"_L1, Lost::keys},
    {"identitiesonly"_L1, Lost::keys},
    {"pkcs11provider"_L1, Lost::keys},
    {"hostkeyalias"_L1, Lost::settings},
    {"addressfamily"_L1, Lost::settings},
    {"bindaddress"_L1, Lost::settings},
    {"bindinterface"_L1, Lost::settings},
    {"ciphers"_L1, Lost::settings},
    {"macs"_L1, Lost::settings},
    {"kexalgorithms"_L1, Lost::settings},
    {"hostkeyalgorithms"_L1, Lost::settings},
    {"pubkeyacceptedalgorithms"_L1, Lost::settings},
    {"pubkeyacceptedkeytypes"_L1, Lost::settings}, // its name before OpenSSH 8.5
    {"requiredrsasize"_L1, Lost::settings},
    {"gssapiauthentication"_L1, Lost::settings},
    {"hostbasedauthentication"_L1, Lost::settings},
};

/// Letters, digits and what names have between them: nothing that ssh reads as a pattern, a user, an address of the web
/// or an option, or that newer clients refuse in a name.
bool isHostName(QStringView word) {
    return !word.isEmpty() && word.front() != u'-' &&
           std::all_of(
               word.begin(), word.end(),
               [](QChar c) { return c.isLetterOrNumber() || QStringView(u"-._:+").contains(c); });
}

Settings settingsOf(const ProcessOutcome& outcome) {
    Settings settings;
    if (!outcome.succeeded())
        return settings;
    for (const QString& line : QString::fromUtf8(outcome.standardOutput).split(u'\n')) {
        const qsizetype space = line.indexOf(u' ');
        if (space > 0)
            settings.insert(line.first(space), expandingTilde(line.sliced(space + 1)));
    }
    return settings;
}

QString currentLoginName() {
    std::vector<char> buffer(1024);
    passwd entry{};
    passwd* found = nullptr;
    while (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) == ERANGE)
        buffer.resize(buffer.size() * 2);
    return found == nullptr ? QString() : QFile::decodeName(found->pw_name);
}

} // namespace

QString SSHAlias::name(const SSHConfigHost& host) {
    for (const QStringView word : QStringView(host.alias).split(u' ', Qt::SkipEmptyParts))
        if (isHostName(word))
            return word.toString();
    return {};
}

ProcessRequest SSHAlias::aliasQuestion(const SSHConfigHost& host) {
    ProcessRequest request = importQuestion(host);
    request.arguments = {u"-G"_s, name(host)};
    return request;
}

ProcessRequest SSHAlias::importQuestion(const SSHConfigHost& host) {
    ProcessRequest request = SSHMetricsCollector::remoteProbeRequest(SSHConfigParser::newServer(host));
    request.arguments.removeLast(); // the script
    request.arguments.prepend(u"-G"_s);
    request.timeLimit = timeLimit;
    request.standardOutputLimit = outputLimit;
    return request;
}

SSHAliasMeaning SSHAlias::compared(const SSHConfigHost& host, const ProcessOutcome& ofAlias,
                                   const ProcessOutcome& ofImport, const QString& loginName) {
    const Settings alias = settingsOf(ofAlias);
    const Settings imported = settingsOf(ofImport);
    SSHAliasMeaning meaning;
    meaning.host = {.alias = host.alias,
                    .hostname = name(host),
                    .user = alias.value(u"user"_s),
                    .port = SSHConfigParser::port(alias.value(u"port"_s)),
                    .identityFile = {}};
    if (alias.isEmpty() || ofImport.end != ProcessOutcome::End::exited)
        return meaning;
    for (const Keyword& keyword : keywords) {
        const auto isLost = [&](const QString& value) {
            return !imported.contains(keyword.name, value) && !(keyword.name == "user"_L1 && value == loginName);
        };
        if (std::ranges::any_of(alias.values(keyword.name), isLost)) {
            meaning.lost = keyword.lost;
            break;
        }
    }
    return meaning;
}

QFuture<SSHAliasMeaning> SSHAlias::ask(const SSHConfigHost& host) {
    const auto askAgain = [host](const ProcessOutcome& ofAlias) {
        return ProcessRunner::run(importQuestion(host)).then([host, ofAlias](const ProcessOutcome& ofImport) {
            return compared(host, ofAlias, ofImport, currentLoginName());
        });
    };
    return ProcessRunner::run(aliasQuestion(host)).then(askAgain).unwrap();
}

} // namespace tarnwick
