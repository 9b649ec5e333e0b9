#pragma once

#include <QByteArray>
#include <QString>

namespace tarnwick {

/// The text of an autostart entry (Desktop Entry Specification 1.5) that runs the program of that path.
[[nodiscard]] QByteArray autostartEntry(const QString& executable);
/// Whether a session runs the program of an entry.
[[nodiscard]] bool isAutostarted(const QByteArray& entry);

} // namespace tarnwick
