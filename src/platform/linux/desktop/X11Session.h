#pragma once

#include <QByteArray>
#include <QRect>

class QScreen;
class QWindow;

namespace tarnwick {

/// What Qt does not offer of an X11 session. On any other kind of display, and where libxcb is missing, every answer is
/// false. Main thread only.
namespace X11Session {

/// Who decides where windows are.
enum class WindowManager {
    none,    ///< not an X11 display
    other,   ///< a window goes where it asks to be; also without a window manager
    kwin,    ///< the same; Plasma's shell may know more of its panels
    gnome,   ///< as other, but the X server hears nothing of presses on the bare desktop
    wlroots, ///< puts each window in the middle, except those that bypass it
};
[[nodiscard]] WindowManager windowManager();
/// Whether the X server runs inside a Wayland session: it then knows the pointer only while that is over an X window.
[[nodiscard]] bool isInsideWayland();
/// The part of a screen that panels leave free, in device-independent pixels: as Qt says, and where Qt does not know,
/// as with several screens, as the window manager or the desktop's shell says.
[[nodiscard]] QRect availableGeometry(const QScreen& screen);
/// The screen that the user works on, as far as the window manager says it; else the primary one.
[[nodiscard]] QScreen* currentScreen();
/// Keeps a window out of task bars, pagers and window switchers. Call before it is shown.
void skipTaskBars(QWindow& window);
/// Makes an unpainted window with an alpha channel clear instead of undefined. Call before it is shown.
void clear(QWindow& window);
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
