#include "SessionBus.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QPointer>

#include <utility>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// Empty where there is none: libdbus would try to start one, which is the desktop's business.
QString sessionAddress() {
    if (QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"); !address.isEmpty())
        return address;
    const QString socket = qEnvironmentVariable("XDG_RUNTIME_DIR") + u"/bus"_s;
    return QFileInfo::exists(socket) ? u"unix:path="_s + socket : QString();
}

/// Each attempt has its own: Qt gives the same connection for the same name, dead or not.
QString newName() {
    static int attempts = 0;
    return u"tarnwick-%1"_s.arg(++attempts);
}

} // namespace

SessionBus::SessionBus(QString address, QObject* parent) : QObject(parent), address_(std::move(address)) {
    retry_.setInterval(1s);
    connect(&retry_, &QTimer::timeout, this, &SessionBus::tryToConnect);
    tryToConnect();
}

SessionBus::~SessionBus() {
    QDBusConnection::disconnectFromBus(connection_.name());
}

SessionBus& SessionBus::shared() {
    static QPointer<SessionBus> bus;
    if (!bus)
        bus = new SessionBus({}, QCoreApplication::instance());
    return *bus;
}

void SessionBus::tryToConnect() {
    retry_.start();
    const QString address = address_.isEmpty() ? sessionAddress() : address_;
    if (address.isEmpty())
        return;
    QDBusConnection attempt = QDBusConnection::connectToBus(address, newName());
    attempt.connect({}, u"/org/freedesktop/DBus/Local"_s, u"org.freedesktop.DBus.Local"_s, u"Disconnected"_s, this,
                    SLOT(disconnected()));
    if (!attempt.isConnected()) {
        QDBusConnection::disconnectFromBus(attempt.name());
        return;
    }
    retry_.stop();
    connection_ = attempt;
    Q_EMIT connected();
}

void SessionBus::disconnected() {
    QDBusConnection::disconnectFromBus(connection_.name());
    connection_ = QDBusConnection(QString());
    retry_.start();
    Q_EMIT lost();
}

} // namespace tarnwick
