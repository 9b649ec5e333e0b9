#pragma once

#include "AppSettings.h"
#include "Server.h"

#include <QList>
#include <QString>

namespace tarnwick {

struct Alert {
    QString title;
    QString message;
    QString key; ///< per server and kind: the server's id, then "-offline", "-disk" or "-ram"
    friend bool operator==(const Alert&, const Alert&) = default;
};

/// The alerts that a fresh probe result raises, in posting order; none for a paused server.
[[nodiscard]] QList<Alert> alertsFor(const Server& server, const ServerMetrics& metrics, const AppSettings& settings);

} // namespace tarnwick
