#pragma once

#include "ProcessRunner.h"
#include "SSHConfigParser.h"

#include <QFuture>
#include <QString>

namespace tarnwick {

/// What ssh makes of a host's alias.
struct SSHAliasMeaning {
    /// What applies to the alias and not to the server that an import makes; the most telling one.
    enum class Lost { nothing, jumpHost, proxyCommand, address, login, keys, settings };

    Lost lost = Lost::nothing;
    SSHConfigHost host; ///< the same host, reached by its alias: address, user and port as ssh has them, no key
    friend bool operator==(const SSHAliasMeaning&, const SSHAliasMeaning&) = default;
};

/// An imported server is reached by the address, user, port and key of its block, as its import is fixed to do. ssh
/// looks its configuration up by the name that it is given, so whatever else the file holds for the alias (a jump host,
/// a certificate, algorithms; in the block itself, a wildcard, a `Match` or an included file) does not apply then.
///
/// Only ssh knows what the file means, so ssh is asked: `ssh -G` prints the settings for a destination, and connects to
/// nothing. The commands of `Match exec` run, as they do with each probe.
namespace SSHAlias {

/// The name by which ssh knows the host: the first one in the alias that is no pattern and that ssh takes for a host
/// and for nothing else. Empty when there is none.
[[nodiscard]] QString name(const SSHConfigHost& host);

/// Any thread; does not wait. Nothing is lost where ssh does not say. Requires a name. The future ends without a result
/// only when the application exits.
[[nodiscard]] QFuture<SSHAliasMeaning> ask(const SSHConfigHost& host);

/// The parts of the above. What ssh would do for the alias alone; with the arguments of the imported server's probe;
/// and what the two answers mean. `loginName` is the user that ssh takes where no setting names one.
[[nodiscard]] ProcessRequest aliasQuestion(const SSHConfigHost& host);
[[nodiscard]] ProcessRequest importQuestion(const SSHConfigHost& host);
[[nodiscard]] SSHAliasMeaning compared(const SSHConfigHost& host, const ProcessOutcome& ofAlias,
                                       const ProcessOutcome& ofImport, const QString& loginName);

} // namespace SSHAlias

} // namespace tarnwick
