#include "Fleet.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

Server Fleet::server(const QString& name, qint64 port) {
    Server result;
    result.id = QUuid::createUuid();
    result.name = name;
    result.host = u"127.0.0.1"_s;
    result.user = u"root"_s;
    result.port = port;
    return result;
}

QString Fleet::add(const QString& name, int count, QStringView command) {
    OpenSshServer& host = *hosts_.emplace_back(std::make_unique<OpenSshServer>());
    if (QString problem = host.start(command); !problem.isEmpty())
        return problem;
    for (int i = 0; i < count; ++i) {
        Server entry = server(u"%1-%2"_s.arg(name).arg(i), host.port());
        entry.user = host.user();
        entry.customSshKeyPath = host.keyPath();
        servers_ << entry;
    }
    return {};
}

QString Fleet::start() {
    servers_ << server(u"refuses"_s, closedPort);
    QString problem = add(u"well"_s, 1);
    return problem.isEmpty() ? add(u"hangs"_s, 1, HostBehaviour::hangs) : problem;
}

QStringList Fleet::displayVariables() {
    return {u"DISPLAY="_s + qEnvironmentVariable("DISPLAY"), u"QT_QPA_PLATFORM=xcb"_s,
            u"XDG_RUNTIME_DIR="_s + qEnvironmentVariable("XDG_RUNTIME_DIR"), u"QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1"_s,
            u"DBUS_SESSION_BUS_ADDRESS="_s + qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS")};
}

} // namespace tarnwick
