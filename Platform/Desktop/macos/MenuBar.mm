#include "Platform/Desktop/MenuBar.h"

#include <utility>

#import <AppKit/AppKit.h>
#import <AppKit/NSMenu.h>

/// Runs the action of a menu entry.
@interface VornMenuAction : NSObject
- (instancetype)initWithAction:(std::function<void()>)action;
- (void)run;
@end

@implementation VornMenuAction {
    std::function<void()> _action;
}

- (instancetype)initWithAction:(std::function<void()>)action
{
    self = [super init];
    if (self != nil) _action = std::move(action);
    return self;
}

- (void)run
{
    _action();
}
@end

namespace vorn {
namespace {

NSString* text(const std::string& utf8)
{
    return [[NSString alloc] initWithBytes:utf8.data() length:utf8.size() encoding:NSUTF8StringEncoding];
}

SEL selectorOf(MenuItem::Kind kind)
{
    switch (kind) {
    case MenuItem::Kind::about: return @selector(orderFrontStandardAboutPanel:);
    case MenuItem::Kind::hide: return @selector(hide:);
    case MenuItem::Kind::hideOthers: return @selector(hideOtherApplications:);
    case MenuItem::Kind::showAll: return @selector(unhideAllApplications:);
    case MenuItem::Kind::minimize: return @selector(performMiniaturize:);
    case MenuItem::Kind::zoom: return @selector(performZoom:);
    case MenuItem::Kind::close: return @selector(performClose:);
    case MenuItem::Kind::copy: return @selector(copy:);
    case MenuItem::Kind::action: return @selector(run);
    case MenuItem::Kind::separator: break;
    }
    return nil;
}

NSMenuItem* entryOf(const MenuItem& item)
{
    // By value, as older headers use other names.
    constexpr NSUInteger optionKey = 1UL << 19;
    constexpr NSUInteger commandKey = 1UL << 20;

    NSMenuItem* const entry = [[NSMenuItem alloc] initWithTitle:text(item.title)
                                                         action:selectorOf(item.kind)
                                                  keyEquivalent:text(item.key)];
    if (item.kind == MenuItem::Kind::hideOthers) entry.keyEquivalentModifierMask = commandKey | optionKey;
    if (item.kind == MenuItem::Kind::action) {
        VornMenuAction* const action = [[VornMenuAction alloc] initWithAction:item.action];
        entry.target = action;
        entry.representedObject = action; // the entry does not retain its target
    }
    return entry;
}

void add(const MenuItem& item, NSMenu* menu)
{
    if (item.kind == MenuItem::Kind::separator)
        [menu addItem:[NSMenuItem separatorItem]];
    else
        [menu addItem:entryOf(item)];
}

bool isOfWindows(const Menu& menu)
{
    for (const MenuItem& item : menu.items)
        if (item.kind == MenuItem::Kind::minimize) return true;
    return false;
}

} // namespace

void setMenuBar(const std::vector<Menu>& menus)
{
    NSMenu* const bar = [[NSMenu alloc] initWithTitle:text({})];
    for (const Menu& menu : menus) {
        NSMenu* const entries = [[NSMenu alloc] initWithTitle:text(menu.title)];
        for (const MenuItem& item : menu.items) add(item, entries);
        NSMenuItem* const entry = [[NSMenuItem alloc] initWithTitle:text(menu.title) action:nil keyEquivalent:text({})];
        entry.submenu = entries;
        [bar addItem:entry];
        if (isOfWindows(menu)) NSApplication.sharedApplication.windowsMenu = entries;
        if (&menu == &menus.back()) NSApplication.sharedApplication.helpMenu = entries;
    }
    NSApplication.sharedApplication.mainMenu = bar;
}

} // namespace vorn
