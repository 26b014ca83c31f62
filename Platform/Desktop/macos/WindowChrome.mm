#include "Platform/Desktop/WindowChrome.h"

#import <AppKit/AppKit.h>

namespace vorn {

void hideTitleBar(std::uintptr_t nativeView)
{
    NSView* const view = (__bridge NSView*)reinterpret_cast<void*>(nativeView);
    NSWindow* const window = view.window;
    window.styleMask |= NSWindowStyleMaskFullSizeContentView;
    window.titlebarAppearsTransparent = YES;
    window.titleVisibility = NSWindowTitleHidden;
}

} // namespace vorn
