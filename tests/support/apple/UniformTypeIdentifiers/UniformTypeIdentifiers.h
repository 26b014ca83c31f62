#pragma once

// Stand-in for the system's database of file types.

#import <Foundation/Foundation.h>

@interface UTType : NSObject
+ (nullable instancetype)typeWithIdentifier:(nonnull NSString*)identifier;
@property(nullable, readonly) NSString* preferredMIMEType;
@end
