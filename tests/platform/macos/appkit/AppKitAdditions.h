// What src/platform/macos/ uses of AppKit and GNUstep's headers do not declare.
#pragma once

#import <AppKit/AppKit.h>

struct NSOperatingSystemVersion {
    NSInteger majorVersion;
    NSInteger minorVersion;
    NSInteger patchVersion;
};

@interface NSProcessInfo (Additions)
@property(readonly) NSOperatingSystemVersion operatingSystemVersion;
@property(readonly) NSInteger thermalState;
@end

constexpr NSEventMask NSEventMaskLeftMouseDown = NSLeftMouseDownMask;
constexpr NSEventMask NSEventMaskLeftMouseUp = NSLeftMouseUpMask;
constexpr NSEventMask NSEventMaskRightMouseDown = NSRightMouseDownMask;
constexpr NSEventMask NSEventMaskRightMouseUp = NSRightMouseUpMask;

@interface NSEvent (Additions)
+ (id)addGlobalMonitorForEventsMatchingMask:(NSEventMask)mask handler:(void (^)(NSEvent*))handler;
+ (void)removeMonitor:(id)monitor;
@end

@interface NSApplication (Additions)
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy;
@end

@interface NSStatusItem (Additions)
@property(readonly) NSStatusBarButton* button;
@end

typedef NS_ENUM(NSInteger, NSWindowTitleVisibility) { NSWindowTitleVisible, NSWindowTitleHidden };

@interface NSWindow (Additions)
@property BOOL titlebarAppearsTransparent;
@property NSWindowTitleVisibility titleVisibility;
@end

@interface NSImageSymbolConfiguration : NSObject
+ (instancetype)configurationWithPointSize:(CGFloat)size weight:(CGFloat)weight;
@end

@interface NSImage (Additions)
+ (NSImage*)imageWithSystemSymbolName:(NSString*)name accessibilityDescription:(NSString*)description;
- (NSImage*)imageWithSymbolConfiguration:(NSImageSymbolConfiguration*)configuration;
@end
