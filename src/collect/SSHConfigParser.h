#pragma once

#include "Server.h"

#include <QList>
#include <QString>
#include <QStringView>

#include <optional>

namespace tarnwick {

/// One concrete `Host` block of the user's ssh configuration. Its identity is `alias`.
struct SSHConfigHost {
    QString alias;                       ///< the text after the `Host` keyword, whole
    QString hostname;                    ///< the alias when the block has no `HostName`
    QString user;                        ///< "root" when the block has no `User`
    qint64 port = 22;                    ///< not range-checked
    std::optional<QString> identityFile; ///< leading "~" expanded
    friend bool operator==(const SSHConfigHost&, const SSHConfigHost&) = default;
    friend size_t qHash(const SSHConfigHost& host, size_t seed = 0) noexcept {
        return qHashMulti(seed, host.alias, host.hostname, host.user, host.port);
    }
};

namespace SSHConfigParser {

/// Reads `~/.ssh/config`; blocks in file order. A file that is missing, unreadable or not UTF-8 gives none.
[[nodiscard]] QList<SSHConfigHost> parseUserConfig();
/// The hosts in the text of such a file. `homeFolder` replaces a leading "~".
[[nodiscard]] QList<SSHConfigHost> parse(QStringView text, const QString& homeFolder);
/// Whether the user's file includes others, whose hosts are in no list.
[[nodiscard]] bool userConfigIncludes();
[[nodiscard]] bool includes(QStringView text);

/// A new remote server with the host's name, address, user, port and key.
[[nodiscard]] Server newServer(const SSHConfigHost& host);

/// Spaces and tabs trimmed from both ends; no other white space.
[[nodiscard]] QStringView withoutBlanks(QStringView text);
/// Decimal digits with an optional sign, in 64 bits, not range-checked; 22 for anything else.
[[nodiscard]] qint64 port(QStringView text);

} // namespace SSHConfigParser

} // namespace tarnwick
