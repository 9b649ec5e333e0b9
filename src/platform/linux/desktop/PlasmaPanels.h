#pragma once

#include <QRect>

class QDBusConnection;
class QScreen;

namespace tarnwick {

/// The part of a screen that Plasma's panels leave free, in device-independent pixels. Its shell is asked over the
/// session bus, as it alone knows how far a floating panel stands off the edge, and KWin may not tell X programs of
/// panels at all. All of the screen under any other desktop, where the shell does not know the screen by that name, and
/// where there is no answer within a tenth of a second.
[[nodiscard]] QRect besidePlasmaPanels(const QScreen& screen, const QDBusConnection& bus);

} // namespace tarnwick
