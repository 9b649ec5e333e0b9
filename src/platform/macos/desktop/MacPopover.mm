#include "MacPopover.h"

#include <utility>

#import <AppKit/AppKit.h>

namespace tarnwick {

/// Reports presses in other applications while it exists. The system may refuse; then there are none.
struct MacPopover::Monitor {
    explicit Monitor(MacPopover& popover)
        : handle([NSEvent addGlobalMonitorForEventsMatchingMask:NSEventMaskLeftMouseDown | NSEventMaskRightMouseDown
                                                        handler:^(NSEvent* /*event*/) {
                                                          Q_EMIT popover.pressedOutside();
                                                        }]) {}
    ~Monitor() {
        if (handle)
            [NSEvent removeMonitor:handle];
    }
    Q_DISABLE_COPY_MOVE(Monitor)

    id handle;
};

MacPopover::MacPopover(std::function<QPoint()> itemPlace, QObject* parent)
    : HangingPopover(parent), itemPlace_(std::move(itemPlace)) {}

MacPopover::~MacPopover() {
    HangingPopover::close();
}

void MacPopover::show(std::unique_ptr<QWindow> content, QPoint anchor) {
    const QPoint item = itemPlace_();
    HangingPopover::show(std::move(content), item.isNull() ? anchor : item);
}

void MacPopover::present(QWindow& content) {
    NSWindow* const window = ((__bridge NSView*)reinterpret_cast<void*>(content.winId())).window;
    window.collectionBehavior |= NSWindowCollectionBehaviorFullScreenAuxiliary; // over a program that fills the screen
    content.show();
    content.requestActivate();
    monitor_ = std::make_unique<Monitor>(*this);
}

void MacPopover::dismiss() {
    monitor_.reset();
}

} // namespace tarnwick
