#pragma once

#include "AppSettings.h"
#include "Server.h"

#include <QList>

namespace tarnwick {

// Three-way merges: of what two processes made, `ours` and `theirs`, from the `base` that both knew. Pure.

/// Servers are matched by their ids, and rows that share one by their order. What one side added is there; what one
/// side removed is not, unless the other changed it (a new probe result is no change). Of what both changed, each field
/// that only they changed is theirs and the rest ours, but the metrics are the later ones. The order is ours, or theirs
/// when we left it as it was; what only the other side added comes last.
[[nodiscard]] QList<Server> merged(const QList<Server>& base, const QList<Server>& ours, const QList<Server>& theirs);

/// Each field that only they changed is theirs, the rest ours.
[[nodiscard]] AppSettings merged(const AppSettings& base, const AppSettings& ours, const AppSettings& theirs);

} // namespace tarnwick
