#pragma once

#include "Platform/Base/Owned.h"

#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

#include <CoreFoundation/CoreFoundation.h>

namespace vorn {

/// An object of Core Foundation that we own: what a function with "Create" or "Copy" in its name returned.
template <class Reference>
using CFOwned = Owned<std::remove_pointer_t<Reference>, CFRelease>;

/// `text` as a CFString; null if it is not UTF-8.
inline CFOwned<CFStringRef> cfString(std::string_view text)
{
    return CFOwned<CFStringRef>(CFStringCreateWithBytes(nullptr, reinterpret_cast<const UInt8*>(text.data()),
                                                        static_cast<CFIndex>(text.size()), kCFStringEncodingUTF8,
                                                        false));
}

/// `string` as UTF-8; nothing if it holds a lone surrogate.
inline std::optional<std::string> utf8(CFStringRef string)
{
    // The size excludes the NUL that the copy writes.
    const CFIndex size = CFStringGetMaximumSizeForEncoding(CFStringGetLength(string), kCFStringEncodingUTF8) + 1;
    std::string text(static_cast<std::size_t>(size), '\0');
    if (!CFStringGetCString(string, text.data(), size, kCFStringEncodingUTF8)) return std::nullopt;
    text.resize(text.find('\0'));
    return text;
}

} // namespace vorn
