#pragma once

// Stand-in for the parts of UserNotifications that the sources for macOS call.

#include <Foundation/Foundation.h>

typedef NSUInteger UNAuthorizationOptions;
enum : UNAuthorizationOptions { UNAuthorizationOptionSound = 1 << 1, UNAuthorizationOptionAlert = 1 << 2 };
typedef NSUInteger UNNotificationPresentationOptions;
enum : UNNotificationPresentationOptions {
    UNNotificationPresentationOptionSound = 1 << 1,
    UNNotificationPresentationOptionList = 1 << 3,
    UNNotificationPresentationOptionBanner = 1 << 4
};

#pragma clang assume_nonnull begin

extern "C" NSString* const UNNotificationDefaultActionIdentifier;

@interface UNNotificationSound : NSObject
@property(class, readonly, copy) UNNotificationSound* defaultSound;
@end

@interface UNNotificationContent : NSObject
@end

@interface UNMutableNotificationContent : UNNotificationContent
@property(copy) NSString* title;
@property(copy) NSString* body;
@property(nullable, copy) UNNotificationSound* sound;
@end

@interface UNNotificationTrigger : NSObject
@end

@interface UNNotificationRequest : NSObject
+ (instancetype)requestWithIdentifier:(NSString*)identifier
                              content:(UNNotificationContent*)content
                              trigger:(nullable UNNotificationTrigger*)trigger;
@end

@interface UNNotification : NSObject
@end

@interface UNNotificationResponse : NSObject
@property(readonly, copy) NSString* actionIdentifier;
@end

@class UNUserNotificationCenter;

@protocol UNUserNotificationCenterDelegate
@optional
- (void)userNotificationCenter:(UNUserNotificationCenter*)center
       willPresentNotification:(UNNotification*)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions options))completionHandler;
- (void)userNotificationCenter:(UNUserNotificationCenter*)center
    didReceiveNotificationResponse:(UNNotificationResponse*)response
             withCompletionHandler:(void (^)(void))completionHandler;
@end

@interface UNUserNotificationCenter : NSObject
@property(class, readonly, strong) UNUserNotificationCenter* currentNotificationCenter;
@property(nullable, weak) id<UNUserNotificationCenterDelegate> delegate;
- (void)requestAuthorizationWithOptions:(UNAuthorizationOptions)options
                      completionHandler:(void (^)(BOOL granted, NSError* _Nullable error))completionHandler;
- (void)addNotificationRequest:(UNNotificationRequest*)request
         withCompletionHandler:(void (^_Nullable)(NSError* _Nullable error))completionHandler;
- (void)removeDeliveredNotificationsWithIdentifiers:(NSArray<NSString*>*)identifiers;
@end

#pragma clang assume_nonnull end
