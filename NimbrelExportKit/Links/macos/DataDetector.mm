#include "NimbrelExportKit/Links/CandidateScan.h"
#include "NimbrelExportKit/Links/InternationalHost.h"
#include "NimbrelExportKit/Links/LinkDetector.h"

#import <Foundation/Foundation.h>

namespace vorn {
namespace {

/// The system's detector of links, whose results users see in Messages.
class DataDetector final : public LinkDetector {
public:
    DataDetector(NSDataDetector* detector, const CancelFlag& cancel) : detector_(detector), cancel_(cancel) {}

    void find(std::string_view text, std::vector<std::string>& urls) const override
    {
        if (!links::mayHoldLink(text)) return;
        @autoreleasepool { // one for each message: a history has hundreds of thousands
            NSString* string = [[NSString alloc] initWithBytes:text.data()
                                                        length:text.size()
                                                      encoding:NSUTF8StringEncoding];
            if (string == nil) return;
            for (NSURL* found in urlsIn(string)) {
                NSString* url = found.absoluteString;
                std::string absolute(url != nil ? url.UTF8String : "");
                if (!absolute.empty() && links::makeHostResolvable(absolute)) urls.push_back(std::move(absolute));
            }
        }
    }

private:
    /// The block is also called without a match while a long text is searched, and must not throw through the system's
    /// functions.
    NSArray<NSURL*>* urlsIn(NSString* string) const
    {
        NSMutableArray<NSURL*>* found = [[NSMutableArray alloc] init];
        const CancelFlag* cancel = &cancel_;
        [detector_ enumerateMatchesInString:string
                                    options:NSMatchingReportProgress
                                      range:NSMakeRange(0, string.length)
                                 usingBlock:^(NSTextCheckingResult* match, NSMatchingFlags, BOOL* stop) {
                                   if (match.URL != nil) [found addObject:match.URL];
                                   if (cancel->isCancelled()) *stop = YES;
                                 }];
        cancel_.check();
        return found;
    }

    NSDataDetector* detector_;
    const CancelFlag& cancel_;
};

} // namespace

std::unique_ptr<LinkDetector> LinkDetector::make(const CancelFlag& cancel)
{
    @autoreleasepool {
        NSError* error = nil;
        NSDataDetector* detector = [NSDataDetector dataDetectorWithTypes:NSTextCheckingTypeLink error:&error];
        if (detector == nil) return nullptr;
        return std::make_unique<DataDetector>(detector, cancel);
    }
}

} // namespace vorn
