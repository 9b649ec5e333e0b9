#include "DesktopPopover.h"

#include "X11Session.h"

#include <QCoreApplication>
#include <QCursor>
#include <QGuiApplication>
#include <QRegion>
#include <QScreen>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick {

using X11Session::WindowManager;

namespace {

/// Qt's X11 support takes a window's type from this property, and numbers the types so.
constexpr auto windowType = "_q_xcb_wm_window_type";
constexpr int desktopType = 2;
constexpr int popupMenuType = 0x200;

} // namespace

DesktopPopover::~DesktopPopover() {
    HangingPopover::close();
}

bool DesktopPopover::isTranslucent() const {
    return QGuiApplication::platformName() != "xcb"_L1 || X11Session::isCompositing();
}

QRect DesktopPopover::availableGeometry(const QScreen& screen) const {
    return X11Session::availableGeometry(screen);
}

QScreen* DesktopPopover::panelScreen() const {
    return X11Session::currentScreen();
}

/// A clear window that is behind all others, or in front of all others as menus are.
std::unique_ptr<QWindow> DesktopPopover::makeCatcher(int type, const QRect& place) {
    auto catcher = std::make_unique<QWindow>();
    catcher->setFlags(Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus);
    catcher->setFlag(Qt::X11BypassWindowManagerHint, type == popupMenuType);
    catcher->setProperty(windowType, type);
    makeTranslucent(*catcher);
    catcher->setGeometry(place);
    X11Session::clear(*catcher);
    X11Session::skipTaskBars(*catcher);
    return catcher;
}

/// Catches what no one else would tell. Under GNOME that is the bare desktop, and its panel, which takes the press but
/// not the focus; under wlroots everything, as a popover that has no focus does not even hear of a press in another
/// program.
void DesktopPopover::makeCatchers() {
    const WindowManager windowManager = X11Session::windowManager();
    const QRect everything = QGuiApplication::primaryScreen()->virtualGeometry();
    if (windowManager == WindowManager::wlroots)
        catchers_.push_back(makeCatcher(popupMenuType, everything));
    if (windowManager != WindowManager::gnome)
        return;
    catchers_.push_back(makeCatcher(desktopType, everything));
    for (const QScreen* screen : QGuiApplication::screens())
        for (const QRect& panel : QRegion(screen->geometry()) - X11Session::availableGeometry(*screen))
            catchers_.push_back(makeCatcher(popupMenuType, panel));
}

void DesktopPopover::present(QWindow& content) {
    const bool isBypassing = X11Session::windowManager() == WindowManager::wlroots;
    // A window that bypasses the window manager gets the keyboard only if it looks like an ordinary one.
    if (isBypassing)
        content.setFlags(Qt::Window | Qt::X11BypassWindowManagerHint | Qt::FramelessWindowHint |
                         Qt::WindowStaysOnTopHint);
    if (QGuiApplication::platformName().startsWith("wayland"_L1)) { // a tiling compositor tiles what could be wider
        content.setMinimumSize({content.width(), 1});
        content.setMaximumWidth(content.width());
    }
    X11Session::skipTaskBars(content);
    makeCatchers();
    for (const auto& catcher : catchers_)
        catcher->show();
    content.show();
    if (isBypassing)
        content.setKeyboardGrabEnabled(true); // such a window may not take the focus itself
    else
        content.requestActivate();
    QCoreApplication::instance()->installNativeEventFilter(this);
    X11Session::watchPresses(true);
}

void DesktopPopover::dismiss() {
    QCoreApplication::instance()->removeNativeEventFilter(this);
    X11Session::watchPresses(false);
    catchers_.clear();
}

bool DesktopPopover::nativeEventFilter(const QByteArray& eventType, void* message, qintptr* /*result*/) {
    if (!X11Session::isWatchedPress(eventType, message))
        return false;
    // Presses in our own windows are not outside: one on the strip is a click on the status item, others take the
    // focus.
    const QWindow* const pressed = QGuiApplication::topLevelAt(QCursor::pos());
    if (!pressed || std::ranges::find(catchers_, pressed, &std::unique_ptr<QWindow>::get) != catchers_.end())
        Q_EMIT pressedOutside();
    return true;
}

} // namespace tarnwick
