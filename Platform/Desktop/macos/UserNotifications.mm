#include "Platform/Desktop/macos/UserNotifications.h"

#include <string>
#include <utility>

#import <UserNotifications/UserNotifications.h>

namespace {

NSString* const outcome = @"outcome"; // a notification replaces an earlier one with this identifier

constexpr UNAuthorizationOptions needed = UNAuthorizationOptionAlert | UNAuthorizationOptionSound;

NSString* stringOf(const std::string& text)
{
    NSString* const string = [[NSString alloc] initWithBytes:text.data()
                                                      length:text.size()
                                                    encoding:NSUTF8StringEncoding];
    return string != nil ? string : @"";
}

UNNotificationRequest* requestFor(const vorn::Notification& notification)
{
    UNMutableNotificationContent* const content = [[UNMutableNotificationContent alloc] init];
    content.title = stringOf(notification.title);
    content.body = stringOf(notification.body);
    if (notification.hasSound) content.sound = UNNotificationSound.defaultSound;
    return [UNNotificationRequest requestWithIdentifier:outcome content:content trigger:nil];
}

} // namespace

/// The center's delegate, called on the center's threads; everything else happens on the main one.
@interface VornNotifications : NSObject <UNUserNotificationCenterDelegate>
@property(nonatomic, copy, nullable) void (^onClick)(void);
@property(nonatomic, strong, nullable) UNNotificationRequest* wanted;
@end

@implementation VornNotifications

- (void)showWanted:(UNNotificationRequest*)request
{
    [NSOperationQueue.mainQueue addOperationWithBlock:^{
      if (self.wanted != request) return; // replaced or withdrawn while the user was asked
      [UNUserNotificationCenter.currentNotificationCenter addNotificationRequest:request withCompletionHandler:nil];
    }];
}

// Without this, nothing is shown while a window other than the main one is in front.
- (void)userNotificationCenter:(UNUserNotificationCenter*)center
       willPresentNotification:(UNNotification*)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions options))completionHandler
{
    completionHandler(UNNotificationPresentationOptionBanner | UNNotificationPresentationOptionList |
                      UNNotificationPresentationOptionSound);
}

- (void)userNotificationCenter:(UNUserNotificationCenter*)center
    didReceiveNotificationResponse:(UNNotificationResponse*)response
             withCompletionHandler:(void (^)(void))completionHandler
{
    if ([response.actionIdentifier isEqualToString:UNNotificationDefaultActionIdentifier])
        [NSOperationQueue.mainQueue addOperationWithBlock:^{
          if (self.onClick != nil) self.onClick();
        }];
    completionHandler();
}

@end

namespace vorn {

UserNotifications::UserNotifications(std::function<void()> onClick)
{
    if (NSBundle.mainBundle.bundleIdentifier == nil) return; // asking for the center would end the process
    notifications_ = [[VornNotifications alloc] init];
    notifications_.onClick = ^{
      onClick();
    };
    UNUserNotificationCenter.currentNotificationCenter.delegate = notifications_;
}

UserNotifications::~UserNotifications()
{
    notifications_.onClick = nil;
    notifications_.wanted = nil;
}

void UserNotifications::ask()
{
    if (notifications_ == nil) return;
    [UNUserNotificationCenter.currentNotificationCenter
        requestAuthorizationWithOptions:needed
                      completionHandler:^(BOOL /*granted*/, NSError* /*error*/){
                      }];
}

void UserNotifications::show(const Notification& notification)
{
    if (notifications_ == nil) return;
    VornNotifications* const notifications = notifications_;
    UNNotificationRequest* const request = requestFor(notification);
    notifications.wanted = request;
    [UNUserNotificationCenter.currentNotificationCenter
        requestAuthorizationWithOptions:needed
                      completionHandler:^(BOOL granted, NSError* /*error*/) {
                        if (granted) [notifications showWanted:request];
                      }];
}

void UserNotifications::withdraw()
{
    if (notifications_ == nil) return;
    notifications_.wanted = nil;
    [UNUserNotificationCenter.currentNotificationCenter removeDeliveredNotificationsWithIdentifiers:@[ outcome ]];
}

} // namespace vorn
