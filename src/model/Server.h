#pragma once

#include "ServerMetrics.h"

#include <QString>
#include <QUuid>

#include <optional>

namespace tarnwick {

/// One entry of the user's fleet: a remote host reached over ssh, or this computer itself.
struct Server {
    QUuid id;                                ///< never changes once created
    QString name;                            ///< display name
    QString host;                            ///< host name or address for ssh
    QString user;                            ///< login user for ssh
    qint64 port = 22;                        ///< ssh port; not range-checked
    bool isLocal = false;                    ///< this computer: probed by a local shell, never over ssh
    bool dockerEnabled = true;               ///< the add form's choice; probes list containers whatever its value
    std::optional<QString> customSshKeyPath; ///< identity file for ssh -i; absent or empty: agent and default keys
    bool isEnabled = true;                   ///< false: paused, skipped by the periodic refresh, no alerts
    std::optional<ServerMetrics> metrics;    ///< latest probe result; absent until the first one

    friend bool operator==(const Server&, const Server&) = default;
};

[[nodiscard]] size_t qHash(const Server& server, size_t seed = 0) noexcept;

/// The id in canonical 8-4-4-4-12 form, upper case, without braces: the form in files, alert keys and drags.
[[nodiscard]] QString uuidString(const QUuid& id);

} // namespace tarnwick

Q_DECLARE_METATYPE(tarnwick::Server)
