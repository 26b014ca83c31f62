#pragma once

// Stand-in for the parts of Foundation that the sources for macOS call. In C++, NS_OPTIONS types are plain integers.

#define nil nullptr

typedef bool BOOL;
#define YES true
#define NO false

typedef long NSInteger;
typedef unsigned long NSUInteger;
typedef NSUInteger NSStringEncoding;
typedef NSUInteger NSMatchingOptions;
typedef NSUInteger NSMatchingFlags;
typedef unsigned long long NSTextCheckingTypes;

enum : NSStringEncoding { NSUTF8StringEncoding = 4 };
enum : NSMatchingOptions { NSMatchingReportProgress = 1 << 0 };
enum : NSTextCheckingTypes { NSTextCheckingTypeLink = 1ULL << 5 };

typedef unsigned long long NSActivityOptions;
enum : NSActivityOptions {
    NSActivityIdleSystemSleepDisabled = 1ULL << 20,
    NSActivityUserInitiated = 0x00FFFFFFULL | NSActivityIdleSystemSleepDisabled
};

typedef struct _NSRange {
    NSUInteger location;
    NSUInteger length;
} NSRange;

static inline NSRange NSMakeRange(NSUInteger location, NSUInteger length)
{
    return {location, length};
}

typedef struct {
    unsigned long state;
    id __unsafe_unretained _Nullable* _Nullable itemsPtr;
    unsigned long* _Nullable mutationsPtr;
    unsigned long extra[5];
} NSFastEnumerationState;

#pragma clang assume_nonnull begin

@protocol NSFastEnumeration
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained _Nullable[_Nonnull])buffer
                                    count:(NSUInteger)count;
@end

__attribute__((objc_root_class))
@interface NSObject
+ (instancetype)alloc;
- (instancetype)init;
@end

@interface NSError : NSObject
@end

@interface NSString : NSObject
- (nullable instancetype)initWithBytes:(const void*)bytes length:(NSUInteger)length encoding:(NSStringEncoding)encoding;
@property(readonly) NSUInteger length;
@property(nullable, readonly) const char* UTF8String;
- (BOOL)isEqualToString:(NSString*)string;
@end

@interface NSArray<__covariant ObjectType> : NSObject <NSFastEnumeration>
+ (instancetype)arrayWithObjects:(const ObjectType _Nonnull[_Nonnull])objects count:(NSUInteger)count;
@property(readonly) NSUInteger count;
@end

@interface NSMutableArray<ObjectType> : NSArray <ObjectType>
- (void)addObject:(ObjectType)object;
@end

@interface NSBundle : NSObject
@property(class, readonly, strong) NSBundle* mainBundle;
@property(nullable, readonly, copy) NSString* bundleIdentifier;
@end

@interface NSOperationQueue : NSObject
@property(class, readonly, strong) NSOperationQueue* mainQueue;
- (void)addOperationWithBlock:(void (^)(void))block;
@end

@interface NSProcessInfo : NSObject
@property(class, readonly, strong) NSProcessInfo* processInfo;
- (id)beginActivityWithOptions:(NSActivityOptions)options reason:(NSString*)reason;
- (void)endActivity:(id)activity;
@end

@interface NSUserDefaults : NSObject
@property(class, readonly, strong) NSUserDefaults* standardUserDefaults;
- (nullable id)objectForKey:(NSString*)key;
- (BOOL)boolForKey:(NSString*)key;
@end

@interface NSURL : NSObject
@property(nullable, readonly, copy) NSString* absoluteString;
@end

@interface NSTextCheckingResult : NSObject
@property(nullable, readonly, copy) NSURL* URL;
@end

@interface NSRegularExpression : NSObject
- (void)enumerateMatchesInString:(NSString*)string
                         options:(NSMatchingOptions)options
                           range:(NSRange)range
                      usingBlock:
                          (void (^)(NSTextCheckingResult* _Nullable result, NSMatchingFlags flags, BOOL* stop))block;
@end

@interface NSDataDetector : NSRegularExpression
+ (nullable NSDataDetector*)dataDetectorWithTypes:(NSTextCheckingTypes)types error:(NSError* _Nullable* _Nullable)error;
@end

#pragma clang assume_nonnull end
