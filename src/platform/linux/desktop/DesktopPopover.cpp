#include "DesktopPopover.h"

#include "FreeMemory.h"
#include "PopoverGeometry.h"
#include "X11Session.h"

#include <QColor>
#include <QCoreApplication>
#include <QCursor>
#include <QEvent>
#include <QFont>
#include <QGuiApplication>
#include <QScreen>
#include <QSurfaceFormat>

using namespace Qt::StringLiterals;

namespace tarnwick {

using X11Session::WindowManager;

namespace {

/// Qt's X11 support takes a window's type from this property, and numbers the types so.
constexpr auto windowType = "_q_xcb_wm_window_type";
constexpr int desktopType = 2;
constexpr int popupMenuType = 0x200;

void makeTranslucent(QWindow& window) {
    QSurfaceFormat format = window.format();
    format.setAlphaBufferSize(8);
    window.setFormat(format);
}

/// A clear window over all screens. GNOME keeps it behind all others, where it catches what falls on the bare desktop.
/// Under wlroots it is right behind the popover, which would not even hear of a press in another program.
std::unique_ptr<QWindow> makeBackdrop(WindowManager windowManager) {
    if (windowManager != WindowManager::gnome && windowManager != WindowManager::wlroots)
        return {};
    auto backdrop = std::make_unique<QWindow>();
    backdrop->setFlags(Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus);
    const bool isGnome = windowManager == WindowManager::gnome;
    backdrop->setFlag(Qt::X11BypassWindowManagerHint, !isGnome);
    backdrop->setProperty(windowType, isGnome ? desktopType : popupMenuType);
    makeTranslucent(*backdrop);
    backdrop->setGeometry(QGuiApplication::primaryScreen()->virtualGeometry());
    X11Session::clear(*backdrop);
    X11Session::skipTaskBars(*backdrop);
    return backdrop;
}

} // namespace

void returnWindowMemory() {
    QFont::cleanup(); // 1.2 MB of font tables, loaded to shape text
    returnFreeMemory();
}

DesktopPopover::DesktopPopover(QObject* parent) : Popover(parent) {
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &DesktopPopover::focusChanged);
}

DesktopPopover::~DesktopPopover() {
    DesktopPopover::close();
}

bool DesktopPopover::isTranslucent() const {
    return QGuiApplication::platformName() != "xcb"_L1 || X11Session::isCompositing();
}

void DesktopPopover::show(std::unique_ptr<QWindow> content, QPoint anchor) {
    close();
    content_ = std::move(content);
    size_ = content_->size();
    anchor_ = anchor;
    hadFocus_ = false;

    const WindowManager windowManager = X11Session::windowManager();
    const bool isBypassing = windowManager == WindowManager::wlroots;
    // A window that bypasses the window manager gets the keyboard only if it looks like an ordinary one.
    content_->setFlags(isBypassing ? Qt::Window | Qt::X11BypassWindowManagerHint : Qt::Tool);
    content_->setFlag(Qt::FramelessWindowHint);
    content_->setFlag(Qt::WindowStaysOnTopHint);
    if (isTranslucent()) {
        makeTranslucent(*content_);
        content_->setProperty("color", QColor(Qt::transparent)); // a Qt Quick window clears itself with it
    }
    content_->installEventFilter(this);
    place();
    X11Session::skipTaskBars(*content_);
    backdrop_ = makeBackdrop(windowManager);
    if (backdrop_)
        backdrop_->show();
    content_->show();
    if (isBypassing)
        content_->setKeyboardGrabEnabled(true); // such a window may not take the focus itself
    else
        content_->requestActivate();
    QCoreApplication::instance()->installNativeEventFilter(this);
    X11Session::watchPresses(true);
}

void DesktopPopover::place() {
    if (!content_)
        return;
    QScreen* screen = anchor_.isNull() ? nullptr : QGuiApplication::screenAt(anchor_);
    if (!screen)
        screen = X11Session::currentScreen();
    const QRect available = X11Session::availableGeometry(*screen);
    const QRect geometry =
        popoverGeometry(anchor_.isNull() ? endOfPanel(screen->geometry(), available) : anchor_, size_, available);
    content_->setScreen(screen);
    // A fixed size also makes tiling window managers let it float.
    content_->setMinimumSize(geometry.size());
    content_->setMaximumSize(geometry.size());
    content_->setGeometry(geometry);
    connect(screen, &QScreen::availableGeometryChanged, this, &DesktopPopover::place, Qt::UniqueConnection);
}

void DesktopPopover::close() {
    if (!content_)
        return;
    QCoreApplication::instance()->removeNativeEventFilter(this);
    X11Session::watchPresses(false);
    content_->removeEventFilter(this);
    content_->hide();
    backdrop_.reset();
    // As a child it is destroyed even when this popover is destroyed before the event loop gets to it.
    QWindow* const leaving = content_.release();
    static_cast<QObject*>(leaving)->setParent(this);
    connect(leaving, &QObject::destroyed, this, &returnWindowMemory, Qt::QueuedConnection);
    leaving->deleteLater();
}

bool DesktopPopover::eventFilter(QObject* watched, QEvent* event) {
    if (watched == content_.get() && event->type() == QEvent::Close) {
        close();
        return true;
    }
    if (watched == content_.get() && event->type() == QEvent::Resize && content_->size() != size_) {
        size_ = content_->size();
        place();
    }
    return Popover::eventFilter(watched, event);
}

bool DesktopPopover::nativeEventFilter(const QByteArray& eventType, void* message, qintptr* /*result*/) {
    if (!X11Session::isWatchedPress(eventType, message))
        return false;
    // Presses in our own windows are not outside: one on the strip is a click on the status item, others take the
    // focus.
    const QWindow* const pressed = QGuiApplication::topLevelAt(QCursor::pos());
    if (!pressed || pressed == backdrop_.get())
        Q_EMIT pressedOutside();
    return true;
}

void DesktopPopover::focusChanged(const QWindow* focus) {
    if (!content_)
        return;
    if (focus == content_.get())
        hadFocus_ = true;
    else if (hadFocus_ && !(focus && belongsToContent(*focus)))
        Q_EMIT lostFocus();
}

bool DesktopPopover::belongsToContent(const QWindow& window) const {
    return window.type() == Qt::Popup || content_->isAncestorOf(&window, QWindow::IncludeTransients);
}

} // namespace tarnwick
