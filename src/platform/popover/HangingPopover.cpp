#include "HangingPopover.h"

#include "FreeMemory.h"
#include "PopoverGeometry.h"

#include <QColor>
#include <QEvent>
#include <QFont>
#include <QGuiApplication>
#include <QScreen>
#include <QSurfaceFormat>

namespace tarnwick {

void returnWindowMemory() {
    QFont::cleanup(); // 1.2 MB of font tables, loaded to shape text
    returnFreeMemory();
}

HangingPopover::HangingPopover(QObject* parent) : Popover(parent) {
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &HangingPopover::focusChanged);
}

void HangingPopover::show(std::unique_ptr<QWindow> content, QPoint anchor) {
    close();
    content_ = std::move(content);
    size_ = content_->size();
    anchor_ = anchor;
    hadFocus_ = false;

    content_->setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    if (isTranslucent()) {
        makeTranslucent(*content_);
        content_->setProperty("color", QColor(Qt::transparent)); // a Qt Quick window clears itself with it
    }
    content_->installEventFilter(this);
    place();
    present(*content_);
}

void HangingPopover::place() {
    if (!content_)
        return;
    QScreen* screen = anchor_.isNull() ? nullptr : QGuiApplication::screenAt(anchor_);
    if (!screen)
        screen = panelScreen();
    const QRect available = availableGeometry(*screen);
    const QRect geometry =
        popoverGeometry(anchor_.isNull() ? endOfPanel(screen->geometry(), available) : anchor_, size_, available);
    content_->setScreen(screen);
    content_->setMaximumSize(largestPopover(available)); // its content keeps to it
    content_->setGeometry(geometry);
    connect(screen, &QScreen::availableGeometryChanged, this, &HangingPopover::place, Qt::UniqueConnection);
}

void HangingPopover::close() {
    if (!content_)
        return;
    content_->removeEventFilter(this);
    content_->hide();
    dismiss();
    // As a child it is destroyed even when this popover is destroyed before the event loop gets to it.
    QWindow* const leaving = content_.release();
    static_cast<QObject*>(leaving)->setParent(this);
    connect(leaving, &QObject::destroyed, this, &returnWindowMemory, Qt::QueuedConnection);
    leaving->deleteLater();
}

QRect HangingPopover::availableGeometry(const QScreen& screen) const {
    return screen.availableGeometry();
}

QScreen* HangingPopover::panelScreen() const {
    return QGuiApplication::primaryScreen();
}

void HangingPopover::makeTranslucent(QWindow& window) {
    QSurfaceFormat format = window.format();
    format.setAlphaBufferSize(8);
    window.setFormat(format);
}

bool HangingPopover::eventFilter(QObject* watched, QEvent* event) {
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

void HangingPopover::focusChanged(const QWindow* focus) {
    if (!content_)
        return;
    if (focus == content_.get())
        hadFocus_ = true;
    else if (hadFocus_ && !(focus && belongsToContent(*focus)))
        Q_EMIT lostFocus();
}

bool HangingPopover::belongsToContent(const QWindow& window) const {
    return window.type() == Qt::Popup || content_->isAncestorOf(&window, QWindow::IncludeTransients);
}

} // namespace tarnwick
