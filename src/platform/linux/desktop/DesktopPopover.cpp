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

    content_->setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    if (isTranslucent()) {
        QSurfaceFormat format = content_->format();
        format.setAlphaBufferSize(8);
        content_->setFormat(format);
        content_->setProperty("color", QColor(Qt::transparent)); // a Qt Quick window clears itself with it
    }
    content_->installEventFilter(this);
    place();
    content_->show();
    content_->requestActivate();
    QCoreApplication::instance()->installNativeEventFilter(this);
    X11Session::watchPresses(true);
}

void DesktopPopover::place() {
    if (!content_)
        return;
    QScreen* screen = anchor_.isNull() ? nullptr : QGuiApplication::screenAt(anchor_);
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    const QRect available = screen->availableGeometry();
    const QRect geometry = popoverGeometry(anchor_.isNull() ? available.topRight() : anchor_, size_, available);
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
    if (!QGuiApplication::topLevelAt(QCursor::pos()))
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
