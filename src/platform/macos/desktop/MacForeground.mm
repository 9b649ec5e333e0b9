#include "MacForeground.h"

#include <QEvent>
#include <QGuiApplication>
#include <QWindow>

#import <AppKit/AppKit.h>

namespace tarnwick {

MacForeground::MacForeground(QObject* parent) : QObject(parent) {
    [NSApp setActivationPolicy:NSApplicationActivationPolicyAccessory];
    qGuiApp->installEventFilter(this);
}

bool MacForeground::eventFilter(QObject* watched, QEvent* event) {
    const auto* const window = event->type() == QEvent::Show ? qobject_cast<QWindow*>(watched) : nullptr;
    if (!window || window->type() == Qt::Popup || window->type() == Qt::ToolTip)
        return false;
    [NSApp activateIgnoringOtherApps:YES];
    if (!window->flags().testFlag(Qt::FramelessWindowHint)) {
        NSWindow* const native = ((__bridge NSView*)reinterpret_cast<void*>(window->winId())).window;
        native.titlebarAppearsTransparent = YES;
        native.titleVisibility = NSWindowTitleHidden;
    }
    return false;
}

} // namespace tarnwick
