#include "NimbrelExportKit/Messages/PreferredMIMEType.h"

#import <Foundation/Foundation.h>
#import <UniformTypeIdentifiers/UniformTypeIdentifiers.h>

namespace vorn {

std::optional<std::string> preferredMIMEType(std::string_view typeIdentifier)
{
    @autoreleasepool {
        NSString* identifier = [[NSString alloc] initWithBytes:typeIdentifier.data()
                                                        length:typeIdentifier.size()
                                                      encoding:NSUTF8StringEncoding];
        if (identifier == nil) return std::nullopt; // not UTF-8, therefore not an identifier
        NSString* mimeType =
            [UTType typeWithIdentifier:identifier].preferredMIMEType; // both messages return nil if it is unknown
        if (mimeType == nil) return std::nullopt;
        return std::string(mimeType.UTF8String);
    }
}

} // namespace vorn
