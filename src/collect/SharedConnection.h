#pragma once

#include "ProcessRunner.h"
#include "Server.h"

#include <QString>
#include <QStringList>

#include <chrono>

namespace tarnwick {

/// A connection of ssh that stays open between probes: the client that opened it goes on in the background, listens at
/// a socket, and ends by itself when nobody has used it for a while. The next client finds the socket and needs neither
/// a key exchange nor a login.
///
/// The sockets are in a folder of our own, for the user alone, so that no other client takes part: a probe accepts any
/// host key, and whoever checks them must not use its connection.
namespace SharedConnection {

/// How long a probe over a connection that is there already may take. One whose host has gone, or whose background
/// client is stopped, says nothing at all.
inline constexpr std::chrono::seconds patience{10};

/// The socket of the server's connection: another one for each host, user, port and key. Empty where none can be had:
/// the folder cannot be made, or its path is too long for a socket or says something to ssh. Main thread.
[[nodiscard]] QString path(const Server& server);

/// ssh's options to use the connection at that socket, or to open it for that long beyond its last use.
[[nodiscard]] QStringList options(const QString& path, std::chrono::seconds lifetime);

/// Whether a probe over a connection failed in a way that may be the connection's.
[[nodiscard]] bool isLost(const ProcessOutcome& outcome);

/// Lets the next client open a new connection. Who has the old one ends when nothing answers there.
void drop(const QString& path);

} // namespace SharedConnection

} // namespace tarnwick
