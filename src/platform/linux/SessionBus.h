#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QTimer>

namespace tarnwick {

/// The session bus, through a connection of this program's own: the one that Qt shares stays dead when the bus has
/// ended, even if it comes back at its address. Without a bus this tries again each second. Main thread only.
class SessionBus : public QObject {
    Q_OBJECT

public:
    /// `address`: as D-Bus writes it; empty for the session's own, which may come to be known later.
    explicit SessionBus(QString address = {}, QObject* parent = nullptr);
    ~SessionBus() override;
    Q_DISABLE_COPY_MOVE(SessionBus)

    /// The session's own, which all of the program shares. It lives as long as the application object.
    [[nodiscard]] static SessionBus& shared();

    /// Not connected while there is no bus. Good until lost(); what is done on it ends with it.
    [[nodiscard]] const QDBusConnection& connection() const { return connection_; }

Q_SIGNALS:
    void connected(); ///< again, or for the first time after construction
    void lost();

private Q_SLOTS:
    void disconnected();

private:
    void tryToConnect();

    const QString address_;
    QDBusConnection connection_{QString()};
    QTimer retry_;
};

} // namespace tarnwick
