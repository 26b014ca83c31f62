#include "Platform/Desktop/ForegroundApplication.h"

#import <AppKit/AppKit.h>

namespace vorn {

void becomeRegularApplication()
{
    [NSApplication.sharedApplication setActivationPolicy:NSApplicationActivationPolicyRegular];
}

void activateApplication()
{
    [NSApplication.sharedApplication activateIgnoringOtherApps:YES];
}

bool bounceDockIcon()
{
    [NSApplication.sharedApplication requestUserAttention:NSInformationalRequest]; // critical requests keep bouncing
    return true;
}

} // namespace vorn
