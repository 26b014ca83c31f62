#include "Platform/Desktop/macos/DockProgress.h"

#import <AppKit/AppKit.h>

/// The icon with a bar over its lower edge. Drawn by hand: the Dock shows nothing of layer-backed views, such as the
/// system's progress indicators.
@interface VornDockTile : NSView
@property(nonatomic) int percent;
@end

@implementation VornDockTile

- (void)drawRect:(NSRect)dirtyRect
{
    const NSRect tile = self.bounds;
    [NSApplication.sharedApplication.applicationIconImage drawInRect:tile];
    const CGFloat height = tile.size.height / 12;
    NSRect bar = NSMakeRect(tile.size.width / 8, tile.size.height / 8, tile.size.width * 3 / 4, height);
    [[NSColor colorWithWhite:0 alpha:0.6] setFill];
    [[NSBezierPath bezierPathWithRoundedRect:bar xRadius:height / 2 yRadius:height / 2] fill];
    bar.size.width *= self.percent / 100.0;
    [[NSColor colorWithWhite:1 alpha:1] setFill];
    [[NSBezierPath bezierPathWithRoundedRect:bar xRadius:height / 2 yRadius:height / 2] fill];
}

@end

namespace vorn {

void DockProgress::show(std::optional<int> percent)
{
    NSDockTile* const dock = NSApplication.sharedApplication.dockTile;
    if (percent) {
        if (tile_ == nil) tile_ = [[VornDockTile alloc] init];
        tile_.percent = *percent;
    }
    dock.contentView = percent ? tile_ : nil;
    [dock display];
}

} // namespace vorn
