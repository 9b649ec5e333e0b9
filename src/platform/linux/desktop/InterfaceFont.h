#pragma once

#include "DesktopSetting.h"

#include <QObject>

namespace tarnwick {

/// Gives the application the desktop's interface font where Qt knows only "sans-serif", as on GNOME, also when it
/// changes. Main thread only.
class InterfaceFont : public QObject {
    Q_OBJECT

public:
    /// `bus` must outlive it.
    explicit InterfaceFont(const SessionBus& bus, QObject* parent = nullptr);

private:
    void apply();

    DesktopSetting name_;
};

} // namespace tarnwick
