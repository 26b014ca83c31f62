#pragma once

// Stand-in for the menus of AppKit.

#include <AppKit/AppKit.h>

typedef NSUInteger NSEventModifierFlags;

#pragma clang assume_nonnull begin

@class NSMenu;

@interface NSMenuItem : NSObject
+ (NSMenuItem*)separatorItem;
- (instancetype)initWithTitle:(NSString*)title action:(nullable SEL)action keyEquivalent:(NSString*)key;
@property NSEventModifierFlags keyEquivalentModifierMask;
@property(nullable, weak) id target;
@property(nullable, strong) id representedObject;
@property(nullable, strong) NSMenu* submenu;
@end

@interface NSMenu : NSObject
- (instancetype)initWithTitle:(NSString*)title;
- (void)addItem:(NSMenuItem*)item;
@end

@interface NSApplication (Menus)
@property(nullable, strong) NSMenu* mainMenu;
@property(nullable, strong) NSMenu* windowsMenu;
@property(nullable, strong) NSMenu* helpMenu;
@end

#pragma clang assume_nonnull end
