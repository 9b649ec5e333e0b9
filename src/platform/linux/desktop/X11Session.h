#pragma once

#include <QByteArray>

namespace tarnwick {

/// What Qt does not offer of an X11 session. On any other kind of display, and where libxcb is missing, every answer is
/// false. Main thread only.
namespace X11Session {

/// Whether a compositing manager runs, so that windows can be translucent.
[[nodiscard]] bool isCompositing();
/// Turns on or off that button presses anywhere on the display reach this program's native event filters. These are
/// copies: the window under the pointer still gets the press, and nothing is grabbed, so a screen locker can start.
/// False when the display cannot do that.
bool watchPresses(bool watch);
/// Whether this is a native event that watchPresses() asked for, of the left or the right button.
[[nodiscard]] bool isWatchedPress(const QByteArray& eventType, const void* event);

} // namespace X11Session

} // namespace tarnwick
