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

#pragma clang assume_nonnull begin

@interface NSNotification : NSObject
@end

@interface NSOperationQueue : NSObject
@property(class, readonly, strong) NSOperationQueue* mainQueue;
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
@end

@interface NSApplication : NSObject
@property(class, readonly, strong) NSApplication* sharedApplication;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)activationPolicy;
- (void)activateIgnoringOtherApps:(BOOL)flag;
@end

#pragma clang assume_nonnull end
