#include "DisplayServer.h"

#include "Libxcb.h"

#include <QByteArray>
#include <QFile>

#include <algorithm>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace tarnwick {

namespace {

/// Connects to the X server through libxcb, as Qt does afterwards. That covers every way of naming a display, and the
/// permission to use it.
bool x11Answers() {
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        return false;
    const Libxcb* const x = Libxcb::find();
    if (!x)
        return false;
    xcb_connection_t* const connection = x->connect(nullptr, nullptr); // never null
    const bool answers = x->connectionHasError(connection) == 0;
    x->disconnect(connection);
    return answers;
}

bool waylandAnswers() {
    const QByteArray name = qgetenv("WAYLAND_DISPLAY");
    if (name.isEmpty())
        return false;
    const QByteArray path = name.startsWith('/') ? name : qgetenv("XDG_RUNTIME_DIR") + '/' + name;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (static_cast<size_t>(path.size()) >= sizeof address.sun_path)
        return false;
    std::copy(path.cbegin(), path.cend(), address.sun_path);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (socket < 0)
        return false;
    const bool answers = ::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    ::close(socket);
    return answers;
}

} // namespace

bool DisplayServer::isReachable() {
    return x11Answers() || waylandAnswers();
}

} // namespace tarnwick
