#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

namespace tarnwick {

/// How this program's windows reach the user's screen.
struct DisplayServer {
    QByteArray platform; ///< the name of Qt's plugin for it; empty where no window can be opened
    QString problem;     ///< one line that says why a display that answers cannot be used; else empty

    /// What the session's environment names. A display counts when it answers: a session kept alive over ssh remembers
    /// one that is gone. A plugin counts when it can be loaded. Qt ends the process in both cases otherwise, so call
    /// this before the application object is made. Waits as long as the display takes to answer.
    [[nodiscard]] static DisplayServer find();

    struct Session {
        QByteArray requested; ///< QT_QPA_PLATFORM
        bool x11 = false;     ///< an X server answers
        bool wayland = false; ///< a Wayland compositor answers
    };
    /// The rule behind find(): what is requested, else X11, where windows can be placed, else Wayland. `canLoad` says
    /// whether Qt's plugin of that name can be loaded.
    [[nodiscard]] static DisplayServer choose(const Session& session,
                                              const std::function<bool(const QByteArray&)>& canLoad);
};

} // namespace tarnwick
