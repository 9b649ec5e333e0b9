#pragma once

#include <QByteArray>

namespace tarnwick {

/// What Qt does not tell of an X11 session. libxcb, which Qt's own X11 support loads anyway, is looked up at run time;
/// on any other kind of display, and where it is missing, every answer is false. Main thread only.
namespace X11Session {

/// A compositing manager runs: windows can be translucent.
[[nodiscard]] bool isCompositing();
/// From now on button presses anywhere on the display reach this program's native event filters too, or no longer.
/// They are copies: whoever owns the window under the pointer still gets the press, and nothing is grabbed, so that a
/// screen locker can start. False when the display cannot do that.
bool watchPresses(bool watch);
/// A native event that watchPresses() asked for, of the left or the right button.
[[nodiscard]] bool isWatchedPress(const QByteArray& eventType, const void* event);

} // namespace X11Session

} // namespace tarnwick
