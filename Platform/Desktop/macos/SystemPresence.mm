#include "Platform/Desktop/SystemPresence.h"

#include "Platform/Desktop/macos/DockProgress.h"
#include "Platform/Desktop/macos/UserNotifications.h"

#include <utility>

#import <AppKit/AppKit.h>

namespace vorn {
namespace {

/// "Play user interface sound effects" in System Settings; on until the user changes it.
bool systemSoundsAreOn()
{
    NSString* const key = @"com.apple.sound.uiaudio.enabled";
    NSUserDefaults* const settings = NSUserDefaults.standardUserDefaults; // includes those that all applications share
    return [settings objectForKey:key] == nil || [settings boolForKey:key];
}

class MacPresence final : public DesktopPresence {
public:
    explicit MacPresence(std::function<void(const std::string&)> onClick)
        : notifications_([onClick = std::move(onClick)] { onClick({}); })
    {
    }

    ~MacPresence() override { MacPresence::allowSleep(); }

    void askToNotify() override { notifications_.ask(); }
    void notify(const Notification& notification) override { notifications_.show(notification); }
    void withdrawNotification() override { notifications_.withdraw(); }

    void stayAwake(const std::string& reason) override
    {
        if (activity_ != nil) return;
        NSString* const why = [[NSString alloc] initWithBytes:reason.data()
                                                       length:reason.size()
                                                     encoding:NSUTF8StringEncoding];
        // Work that the user waits for: no idle sleep, and no slowing down while the window is hidden.
        activity_ = [NSProcessInfo.processInfo beginActivityWithOptions:NSActivityUserInitiated
                                                                 reason:why != nil ? why : @""];
    }

    void allowSleep() override
    {
        if (activity_ != nil) [NSProcessInfo.processInfo endActivity:activity_];
        activity_ = nil;
    }

    void showProgress(std::optional<int> percent) override { progress_.show(percent); }

    void playSound() override
    {
        if (systemSoundsAreOn()) [[NSSound soundNamed:@"Glass"] play];
    }

private:
    UserNotifications notifications_;
    DockProgress progress_;
    id activity_ = nil;
};

} // namespace

std::unique_ptr<DesktopPresence> systemPresence(const ApplicationNames& /*names*/,
                                                std::function<void(const std::string& activationToken)> onClick)
{
    return std::make_unique<MacPresence>(std::move(onClick));
}

} // namespace vorn
