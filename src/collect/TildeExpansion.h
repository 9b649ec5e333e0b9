#pragma once

#include <QDir>
#include <QString>

namespace tarnwick {

/// The path with a leading "~" replaced by `homeFolder`, or a leading "~name" by that user's home folder; unchanged
/// when there is no such user. Any thread.
[[nodiscard]] QString expandingTilde(const QString& path, const QString& homeFolder = QDir::homePath());

} // namespace tarnwick
