#include "Platform/Desktop/MotionPreference.h"

#include <utility>

#import <AppKit/AppKit.h>

namespace vorn {

struct MotionWatch::System {
    id observer;
};

bool systemReducesMotion()
{
    return NSWorkspace.sharedWorkspace.accessibilityDisplayShouldReduceMotion;
}

MotionWatch::MotionWatch(std::function<void(bool)> onChange) : system_(std::make_unique<System>())
{
    system_->observer = [NSWorkspace.sharedWorkspace.notificationCenter
        addObserverForName:NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification
                    object:nil
                     queue:NSOperationQueue.mainQueue
                usingBlock:^(NSNotification* /*notification*/) {
                  onChange(systemReducesMotion());
                }];
}

MotionWatch::~MotionWatch()
{
    [NSWorkspace.sharedWorkspace.notificationCenter removeObserver:system_->observer];
}

} // namespace vorn
