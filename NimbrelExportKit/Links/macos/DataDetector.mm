#include "NimbrelExportKit/Links/LinkDetector.h"

#import <Foundation/Foundation.h>

namespace vorn {
namespace {

/// The system's detector of links, the one whose findings people see in Messages.
class DataDetector final : public LinkDetector {
public:
    explicit DataDetector(NSDataDetector* detector) : detector_(detector) {}

    void find(std::string_view text, std::vector<std::string>& urls) const override
    {
        @autoreleasepool { // one a message: a history has hundreds of thousands
            NSString* string = [[NSString alloc] initWithBytes:text.data()
                                                        length:text.size()
                                                      encoding:NSUTF8StringEncoding];
            if (string == nil) return;
            const NSRange whole = NSMakeRange(0, string.length);
            for (NSTextCheckingResult* match in [detector_ matchesInString:string options:0 range:whole]) {
                NSString* url = match.URL.absoluteString;
                if (url != nil) urls.emplace_back(url.UTF8String);
            }
        }
    }

private:
    NSDataDetector* detector_;
};

} // namespace

std::unique_ptr<LinkDetector> LinkDetector::make()
{
    @autoreleasepool {
        NSError* error = nil;
        NSDataDetector* detector = [NSDataDetector dataDetectorWithTypes:NSTextCheckingTypeLink error:&error];
        if (detector == nil) return nullptr;
        return std::make_unique<DataDetector>(detector);
    }
}

} // namespace vorn
