#pragma once

// Stand-in for the parts of AppKit that the sources for macOS call.

#include <Foundation/Foundation.h>

typedef NSString* NSNotificationName;
typedef NSUInteger NSWindowStyleMask;
enum : NSWindowStyleMask { NSWindowStyleMaskFullSizeContentView = 1UL << 15 };
typedef enum NSWindowTitleVisibility : NSInteger {
    NSWindowTitleVisible = 0,
    NSWindowTitleHidden = 1
} NSWindowTitleVisibility;
typedef enum NSApplicationActivationPolicy : NSInteger {
    NSApplicationActivationPolicyRegular
} NSApplicationActivationPolicy;
typedef enum NSRequestUserAttentionType : NSUInteger {
    NSCriticalRequest = 0,
    NSInformationalRequest = 10
} NSRequestUserAttentionType;

typedef double CGFloat;
typedef struct CGPoint {
    CGFloat x, y;
} NSPoint;
typedef struct CGSize {
    CGFloat width, height;
} NSSize;
typedef struct CGRect {
    NSPoint origin;
    NSSize size;
} NSRect;

static inline NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat width, CGFloat height)
{
    return {{x, y}, {width, height}};
}

#pragma clang assume_nonnull begin

@interface NSNotification : NSObject
@end

@interface NSNotificationCenter : NSObject
- (id)addObserverForName:(nullable NSNotificationName)name
                  object:(nullable id)object
                   queue:(nullable NSOperationQueue*)queue
              usingBlock:(void (^)(NSNotification* notification))block;
- (void)removeObserver:(id)observer;
@end

extern "C" NSNotificationName const NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification;

@interface NSWorkspace : NSObject
@property(class, readonly, strong) NSWorkspace* sharedWorkspace;
@property(readonly, strong) NSNotificationCenter* notificationCenter;
@property(readonly) BOOL accessibilityDisplayShouldReduceMotion;
@end

@interface NSWindow : NSObject
@property NSWindowStyleMask styleMask;
@property BOOL titlebarAppearsTransparent;
@property NSWindowTitleVisibility titleVisibility;
@end

@interface NSView : NSObject
@property(nullable, readonly, assign) NSWindow* window;
@property NSRect bounds;
- (void)drawRect:(NSRect)dirtyRect;
@end

@interface NSColor : NSObject
+ (NSColor*)colorWithWhite:(CGFloat)white alpha:(CGFloat)alpha;
- (void)setFill;
@end

@interface NSBezierPath : NSObject
+ (NSBezierPath*)bezierPathWithRoundedRect:(NSRect)rect xRadius:(CGFloat)xRadius yRadius:(CGFloat)yRadius;
- (void)fill;
@end

@interface NSImage : NSObject
- (void)drawInRect:(NSRect)rect;
@end

@interface NSSound : NSObject
+ (nullable NSSound*)soundNamed:(NSString*)name;
- (BOOL)play;
@end

@interface NSDockTile : NSObject
@property(nullable, strong) NSView* contentView;
- (void)display;
@end

@interface NSApplication : NSObject
@property(class, readonly, strong) NSApplication* sharedApplication;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)activationPolicy;
- (void)activateIgnoringOtherApps:(BOOL)flag;
- (NSInteger)requestUserAttention:(NSRequestUserAttentionType)requestType;
@property(null_resettable, strong) NSImage* applicationIconImage;
@property(readonly, strong) NSDockTile* dockTile;
@end

#pragma clang assume_nonnull end
