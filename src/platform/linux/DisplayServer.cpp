#include "DisplayServer.h"

#include "Libxcb.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QJsonArray>
#include <QJsonObject>
#include <QPluginLoader>

#include <algorithm>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

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

/// Whether Qt finds its platform plugin of that name and can load it, with all the libraries that it needs.
bool canLoadPlugin(const QByteArray& platform) {
    QStringList folders{qEnvironmentVariable("QT_QPA_PLATFORM_PLUGIN_PATH")};
    for (const QString& path : QCoreApplication::libraryPaths())
        folders += path + u"/platforms"_s;
    for (const QString& folder : std::as_const(folders)) {
        if (folder.isEmpty())
            continue;
        for (QDirIterator files(folder, QDir::Files); files.hasNext();) {
            QPluginLoader plugin(files.next());
            const QJsonArray names = plugin.metaData().value("MetaData"_L1).toObject().value("Keys"_L1).toArray();
            if (names.contains(QString::fromUtf8(platform)) && plugin.load())
                return true;
        }
    }
    return false;
}

} // namespace

DisplayServer DisplayServer::choose(const Session& session, const std::function<bool(const QByteArray&)>& canLoad) {
    if (!session.x11 && !session.wayland)
        return {};
    QByteArrayList wanted = session.requested.split(';');
    wanted.removeAll({});
    if (wanted.isEmpty()) {
        if (session.x11)
            wanted << "xcb";
        if (session.wayland)
            wanted << "wayland";
    }
    for (const QByteArray& entry : std::as_const(wanted)) {
        const QByteArray platform = entry.split(':').constFirst(); // options follow it
        const bool answers = platform == "xcb" ? session.x11 : platform.startsWith("wayland") ? session.wayland : true;
        if (answers && canLoad(platform))
            return {entry, {}};
    }
    QString problem = u"no window can be opened here: Qt's platform plugin \"%1\" cannot be used"_s.arg(
        QString::fromUtf8(wanted.join("\" or \"")));
    if (wanted.constLast().startsWith("wayland"))
        problem += u" (Debian has it in the package qt6-wayland)"_s;
    return {{}, problem};
}

DisplayServer DisplayServer::find() {
    return choose({qgetenv("QT_QPA_PLATFORM"), x11Answers(), waylandAnswers()}, canLoadPlugin);
}

} // namespace tarnwick
