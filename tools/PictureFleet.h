#pragma once

#include "OpenSshServer.h"
#include "Server.h"
#include "UserHome.h"

#include <QList>

namespace tarnwick {

/// What the program starts with for a picture; `same`: it goes on where the picture before left it.
enum class Scene { same, usual, states, containers, paused, firstLaunch };

/// A scene to start with.
struct Setting {
    QList<Server> servers;
    QString shows; ///< what is there once all hosts that answer have
    bool isFirstLaunch = false;
};

/// A host at an address of its own, which the user's ssh configuration leads to a server on this computer. Its disk,
/// its processor's idle share and its containers are the given ones; the rest is this computer's. Whatever fails
/// throws std::runtime_error.
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

    /// Starts them, and leads ssh to them. Throws std::runtime_error.
    void start(const UserHome& home);
    [[nodiscard]] Setting setting(Scene scene) const;

private:
    [[nodiscard]] Server staging() const;
    [[nodiscard]] Server paused() const;

    PictureHost web_;
    PictureHost worker_;
    PictureHost backup_;
};

} // namespace tarnwick
