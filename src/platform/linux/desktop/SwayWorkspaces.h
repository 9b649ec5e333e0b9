#pragma once

#include <QList>
#include <QRect>

namespace tarnwick {

/// What panels leave free of one screen.
struct WorkArea {
    QRect place; ///< in the display's pixels
    bool isFocused = false;

    friend bool operator==(const WorkArea&, const WorkArea&) = default;
};

/// The workspace that each screen shows. Sway tells X programs nothing of its bars, so it is asked over the socket that
/// SWAYSOCK names. Empty under any other compositor, and where there is no answer within a tenth of a second.
[[nodiscard]] QList<WorkArea> swayWorkspaces();

} // namespace tarnwick
