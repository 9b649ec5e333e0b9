#include "SwayWorkspaces.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QScopeGuard>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// From sway-ipc(7). A message is this text, its length without its head, its type, and JSON. Numbers are in the byte
/// order of this computer.
constexpr QByteArrayView magic = "i3-ipc";
constexpr std::array<std::uint32_t, 2> getWorkspaces{0, 1};
constexpr qsizetype headBytes = magic.size() + sizeof getWorkspaces;
constexpr qsizetype longestAnswer = 1 << 20;

/// Exactly so many bytes; fewer where the socket fails or its time is over.
QByteArray receive(int socket, qsizetype count) {
    QByteArray bytes(count, Qt::Uninitialized);
    qsizetype length = 0;
    while (length < count) {
        const ssize_t got = ::recv(socket, bytes.data() + length, static_cast<size_t>(count - length), 0);
        if (got <= 0)
            break;
        length += got;
    }
    bytes.truncate(length);
    return bytes;
}

QList<WorkArea> parsed(const QByteArray& json) {
    QList<WorkArea> workspaces;
    for (const auto entries = QJsonDocument::fromJson(json).array(); const auto& entry : entries) {
        if (!entry["visible"_L1].toBool())
            continue;
        const QJsonValue rect = entry["rect"_L1];
        workspaces.push_back(
            {QRect(rect["x"_L1].toInt(), rect["y"_L1].toInt(), rect["width"_L1].toInt(), rect["height"_L1].toInt()),
             entry["focused"_L1].toBool()});
    }
    return workspaces;
}

} // namespace

QList<WorkArea> swayWorkspaces() {
    const QByteArray path = qgetenv("SWAYSOCK");
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.isEmpty() || static_cast<size_t>(path.size()) >= sizeof address.sun_path)
        return {};
    std::ranges::copy(path, address.sun_path);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (socket < 0)
        return {};
    const auto closing = qScopeGuard([socket] { ::close(socket); });
    constexpr timeval patience{.tv_sec = 0, .tv_usec = 100'000};
    for (const int direction : {SO_RCVTIMEO, SO_SNDTIMEO})
        ::setsockopt(socket, SOL_SOCKET, direction, &patience, sizeof patience);
    const QByteArray question =
        magic.toByteArray() + QByteArray(reinterpret_cast<const char*>(getWorkspaces.data()), sizeof getWorkspaces);
    if (::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        ::send(socket, question.data(), static_cast<size_t>(question.size()), MSG_NOSIGNAL) != question.size())
        return {};
    const QByteArray head = receive(socket, headBytes);
    std::uint32_t length = 0;
    if (head.size() != headBytes)
        return {};
    std::memcpy(&length, head.data() + magic.size(), sizeof length);
    return length > longestAnswer ? QList<WorkArea>() : parsed(receive(socket, length));
}

} // namespace tarnwick
