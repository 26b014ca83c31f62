#include "Platform/Base/BundleInfo.h"

#include <memory>

#include <CoreFoundation/CoreFoundation.h>

namespace vorn {
namespace {

struct Release {
    void operator()(CFTypeRef object) const noexcept { CFRelease(object); }
};

} // namespace

std::optional<std::string> mainBundleText(const std::string& key)
{
    const std::unique_ptr<const void, Release> name(
        CFStringCreateWithBytes(nullptr, reinterpret_cast<const UInt8*>(key.data()), static_cast<CFIndex>(key.size()),
                                kCFStringEncodingUTF8, false));
    CFBundleRef bundle = CFBundleGetMainBundle();
    if (!name || bundle == nullptr) return std::nullopt;
    CFTypeRef value = CFBundleGetValueForInfoDictionaryKey(bundle, static_cast<CFStringRef>(name.get()));
    if (value == nullptr || CFGetTypeID(value) != CFStringGetTypeID()) return std::nullopt;
    auto text = static_cast<CFStringRef>(value);
    // The size leaves out the NUL that the copy writes.
    std::string result(
        static_cast<std::size_t>(CFStringGetMaximumSizeForEncoding(CFStringGetLength(text), kCFStringEncodingUTF8)) + 1,
        '\0');
    if (!CFStringGetCString(text, result.data(), static_cast<CFIndex>(result.size()), kCFStringEncodingUTF8)) {
        return std::nullopt;
    }
    return std::string(result.c_str());
}

} // namespace vorn
