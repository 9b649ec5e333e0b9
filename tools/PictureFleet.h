#pragma once

#include "OpenSshServer.h"
#include "Server.h"
#include "UserHome.h"

#include <QList>

namespace tarnwick {

/// The state in which the program starts for a picture; `same`: it continues where the previous picture left it.
enum class Scene {
    same,
    usual,
    states,
    containers,
    fleet,
    paused,
    firstLaunch,
    playedHours,
    playedMac,
    playedFirstLaunch
};

/// A scene to start with.
struct Setting {
    QList<Server> servers;
    QString shows; ///< what is shown once all hosts that answer have answered
    bool isFirstLaunch = false;
};

/// A host with an address of its own, and all below that, which the user's ssh configuration maps to a server on this
/// computer. Its disk,
/// its processor's idle share and its containers are given; the rest is this computer's. Failures throw
/// std::runtime_error.
class PictureHost {
public:
    struct Disk {
        int gibibytes;
        int percent; ///< used
    };

    PictureHost(const QString& name, Disk disk, const QByteArray& idle, QByteArrayView containers);

    void start(QStringView forceCommand = {});
    [[nodiscard]] QString configuration() const;
    [[nodiscard]] Server entry() const;

private:
    QString name_;
    OpenSshServer ssh_;
};

/// The hosts of all pictures.
class PictureFleet {
public:
    PictureFleet();

    /// Starts them, and configures ssh for them. Throws std::runtime_error.
    void start(const UserHome& home);
    [[nodiscard]] Setting setting(Scene scene) const;

private:
    [[nodiscard]] Server staging() const;
    [[nodiscard]] Server paused() const;
    [[nodiscard]] QList<Server> large() const;

    PictureHost web_;
    PictureHost worker_;
    PictureHost backup_;
    PictureHost database_;
};

} // namespace tarnwick
