#include "MacStatusItem.h"

#include "ShownText.h"

#include <functional>
#include <utility>

#import <AppKit/AppKit.h>

/// What the button sends its clicks to.
@interface TarnwickStatusItemTarget : NSObject
- (instancetype)initWithAction:(std::function<void()>)action;
- (void)act:(id)sender;
@end

@implementation TarnwickStatusItemTarget {
    std::function<void()> _action;
}

- (instancetype)initWithAction:(std::function<void()>)action {
    self = [super init];
    if (self)
        _action = std::move(action);
    return self;
}

- (void)act:(id)sender {
    _action();
}

@end

namespace tarnwick {

namespace {

/// In points.
constexpr CGFloat symbolSize = 12;

NSString* native(const QString& text) {
    return [NSString stringWithUTF8String:text.toUtf8().constData()];
}

NSImage* symbol(const StatusItemContent& content) {
    NSImage* const image = [NSImage imageWithSystemSymbolName:native(content.symbolName)
                                     accessibilityDescription:native(content.description)];
    NSImageSymbolConfiguration* const size =
        [NSImageSymbolConfiguration configurationWithPointSize:symbolSize weight:NSFontWeightSemibold];
    return [image imageWithSymbolConfiguration:size];
}

} // namespace

struct MacStatusItem::Native {
    NSStatusItem* item;
    TarnwickStatusItemTarget* target; ///< the button does not keep it
};

MacStatusItem::MacStatusItem(QObject* parent) : StatusItem(parent), native_(std::make_unique<Native>()) {
    native_->item = [[NSStatusBar systemStatusBar] statusItemWithLength:NSVariableStatusItemLength];
    native_->target = [[TarnwickStatusItemTarget alloc] initWithAction:[this] {
        Q_EMIT clicked(place());
    }];
    NSStatusBarButton* const button = native_->item.button;
    button.imagePosition = NSImageLeft;
    button.target = native_->target;
    button.action = @selector(act:);
    [button sendActionOn:NSEventMaskLeftMouseUp | NSEventMaskRightMouseUp];
}

MacStatusItem::~MacStatusItem() {
    native_->item.button.target = nil;
    [[NSStatusBar systemStatusBar] removeStatusItem:native_->item];
}

void MacStatusItem::setContent(const StatusItemContent& content) {
    if (content == content_)
        return;
    NSStatusBarButton* const button = native_->item.button;
    if (content.symbolName != content_.symbolName || content.description != content_.description)
        button.image = symbol(content);
    button.title = native(shownText(content.title));
    content_ = content;
}

QPoint MacStatusItem::place() const {
    NSStatusBarButton* const button = native_->item.button;
    NSWindow* const bar = button.window;
    NSScreen* const firstScreen = [NSScreen screens].firstObject;
    if (!bar || !firstScreen)
        return {};
    // From the bottom of the first screen upwards.
    const NSRect frame = [bar convertRectToScreen:[button convertRect:button.bounds toView:nil]];
    return {qRound(NSMidX(frame)), qRound(NSMaxY(firstScreen.frame) - NSMidY(frame))};
}

} // namespace tarnwick
