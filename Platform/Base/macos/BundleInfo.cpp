#include "Platform/Base/BundleInfo.h"

#include "Platform/Base/macos/CFObject.h"

namespace vorn {

std::optional<std::string> mainBundleText(const std::string& key)
{
    const auto name = cfString(key);
    CFBundleRef bundle = CFBundleGetMainBundle();
    if (!name || bundle == nullptr) return std::nullopt;
    CFTypeRef value = CFBundleGetValueForInfoDictionaryKey(bundle, name.get());
    if (value == nullptr || CFGetTypeID(value) != CFStringGetTypeID()) return std::nullopt;
    return utf8(static_cast<CFStringRef>(value));
}

} // namespace vorn
