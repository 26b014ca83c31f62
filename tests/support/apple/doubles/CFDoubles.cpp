#include "tests/support/apple/doubles/CFDoubles.h"

#include "Platform/Base/Text.h"

#include <algorithm>
#include <memory>
#include <set>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace vorn::testing {
namespace {

std::set<const CFDouble*>& live()
{
    static std::set<const CFDouble*> objects;
    return objects;
}

/// Destroyed objects are kept until the program ends, so that a later use is noticed.
void bury(const CFDouble* object)
{
    static std::vector<std::unique_ptr<const CFDouble>> gone;
    live().erase(object);
    gone.emplace_back(object);
}

CFDouble& changeable(CFTypeRef object)
{
    return const_cast<CFDouble&>(CFDouble::of(object));
}

void release(CFTypeRef object)
{
    CFDouble& released = changeable(object);
    if (!released.isConstant && !live().contains(&released)) {
        ADD_FAILURE() << "released a destroyed object";
        return;
    }
    --released.retains;
    if (released.isConstant) {
        EXPECT_GE(released.retains, 1) << released.bytes << " was released too often";
    } else if (released.retains == 0) {
        for (const auto& [key, value] : released.pairs) {
            release(key);
            release(value);
        }
        for (const CFTypeRef item : released.items) release(item);
        bury(&released);
    }
}

} // namespace

CFTypeRef CFDouble::make(Type type, std::string bytes)
{
    const auto* object = new CFDouble{type, std::move(bytes)};
    live().insert(object);
    return object;
}

CFArrayRef CFDouble::makeArray(std::vector<CFTypeRef> items)
{
    const CFTypeRef array = make(Type::array, "");
    changeable(array).items = std::move(items);
    return static_cast<CFArrayRef>(array);
}

std::size_t liveCFObjects()
{
    return live().size();
}

std::map<std::string, std::string> readable(CFDictionaryRef dictionary)
{
    std::map<std::string, std::string> result;
    for (const auto& [key, value] : CFDouble::of(dictionary).pairs) result.emplace(key->bytes, value->bytes);
    return result;
}

} // namespace vorn::testing

using vorn::testing::CFDouble;
using Type = CFDouble::Type;

namespace {

const CFDouble trueValue = CFDouble::constant(Type::boolean, "true");
const CFDouble falseValue = CFDouble::constant(Type::boolean, "false");

std::string bytesAt(const UInt8* bytes, CFIndex size)
{
    return {reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(size)};
}

} // namespace

extern "C" {

const CFBooleanRef kCFBooleanTrue = reinterpret_cast<CFBooleanRef>(&trueValue);
const CFBooleanRef kCFBooleanFalse = reinterpret_cast<CFBooleanRef>(&falseValue);
const CFAllocatorRef kCFAllocatorDefault = nullptr;
const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks = {0};
const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks = {0};

void CFRelease(CFTypeRef object)
{
    vorn::testing::release(object);
}

CFTypeRef CFRetain(CFTypeRef object)
{
    ++vorn::testing::changeable(object).retains;
    return object;
}

CFTypeID CFGetTypeID(CFTypeRef object)
{
    return static_cast<CFTypeID>(CFDouble::of(object).type);
}

Boolean CFEqual(CFTypeRef one, CFTypeRef other)
{
    return CFDouble::of(one).type == CFDouble::of(other).type && CFDouble::of(one).bytes == CFDouble::of(other).bytes;
}

CFTypeID CFBooleanGetTypeID()
{
    return static_cast<CFTypeID>(Type::boolean);
}

Boolean CFBooleanGetValue(CFBooleanRef boolean)
{
    EXPECT_EQ(CFDouble::of(boolean).type, Type::boolean);
    return boolean == kCFBooleanTrue ? 1 : 0;
}

CFTypeID CFNumberGetTypeID()
{
    return static_cast<CFTypeID>(Type::number);
}

Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value)
{
    EXPECT_EQ(CFDouble::of(number).type, Type::number);
    EXPECT_EQ(type, kCFNumberDoubleType);
    *static_cast<double*>(value) = std::stod(CFDouble::of(number).bytes);
    return 1;
}

CFTypeID CFStringGetTypeID()
{
    return static_cast<CFTypeID>(Type::string);
}

CFTypeID CFDataGetTypeID()
{
    return static_cast<CFTypeID>(Type::data);
}

/// Null if the bytes are not well-formed UTF-8, like the real one.
CFStringRef CFStringCreateWithBytes(CFAllocatorRef /*allocator*/, const UInt8* bytes, CFIndex size,
                                    CFStringEncoding encoding, Boolean /*isExternalRepresentation*/)
{
    EXPECT_EQ(encoding, kCFStringEncodingUTF8);
    std::string text = bytesAt(bytes, size);
    if (!vorn::text::isWellFormed(text)) return nullptr;
    return static_cast<CFStringRef>(CFDouble::make(Type::string, std::move(text)));
}

/// In UTF-16 units.
CFIndex CFStringGetLength(CFStringRef string)
{
    CFIndex length = 0;
    for (const char32_t scalar : vorn::text::scalars(CFDouble::of(string).bytes)) length += scalar > 0xFFFF ? 2 : 1;
    return length;
}

CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding /*encoding*/)
{
    return length * 3;
}

Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex size, CFStringEncoding encoding)
{
    EXPECT_EQ(encoding, kCFStringEncodingUTF8);
    const std::string& bytes = CFDouble::of(string).bytes;
    if (static_cast<CFIndex>(bytes.size()) >= size) return 0;
    std::ranges::copy(bytes, buffer);
    buffer[bytes.size()] = '\0';
    return 1;
}

CFDataRef CFDataCreate(CFAllocatorRef /*allocator*/, const UInt8* bytes, CFIndex size)
{
    return static_cast<CFDataRef>(CFDouble::make(Type::data, bytesAt(bytes, size)));
}

/// Null if there are none, as may happen on a Mac.
const UInt8* CFDataGetBytePtr(CFDataRef data)
{
    const std::string& bytes = CFDouble::of(data).bytes;
    return bytes.empty() ? nullptr : reinterpret_cast<const UInt8*>(bytes.data());
}

CFIndex CFDataGetLength(CFDataRef data)
{
    return static_cast<CFIndex>(CFDouble::of(data).bytes.size());
}

CFMutableDictionaryRef CFDictionaryCreateMutable(CFAllocatorRef /*allocator*/, CFIndex /*capacity*/,
                                                 const CFDictionaryKeyCallBacks* keys,
                                                 const CFDictionaryValueCallBacks* values)
{
    // Other callbacks would neither retain objects nor compare keys by content.
    EXPECT_EQ(keys, &kCFTypeDictionaryKeyCallBacks);
    EXPECT_EQ(values, &kCFTypeDictionaryValueCallBacks);
    return reinterpret_cast<CFMutableDictionaryRef>(const_cast<void*>(CFDouble::make(Type::dictionary, {})));
}

void CFDictionarySetValue(CFMutableDictionaryRef dictionary, const void* key, const void* value)
{
    ASSERT_TRUE(key != nullptr && value != nullptr) << "a dictionary holds no null";
    const CFDouble*& kept = vorn::testing::changeable(dictionary).pairs[&CFDouble::of(key)];
    CFRetain(value);
    if (kept == nullptr)
        CFRetain(key);
    else
        CFRelease(kept);
    kept = &CFDouble::of(value);
}

const void* CFDictionaryGetValue(CFDictionaryRef dictionary, const void* key)
{
    EXPECT_EQ(CFDouble::of(dictionary).type, Type::dictionary);
    const auto& pairs = CFDouble::of(dictionary).pairs;
    const auto found = pairs.find(&CFDouble::of(key));
    return found == pairs.end() ? nullptr : found->second;
}

CFIndex CFArrayGetCount(CFArrayRef array)
{
    EXPECT_EQ(CFDouble::of(array).type, Type::array);
    return static_cast<CFIndex>(CFDouble::of(array).items.size());
}

const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index)
{
    return CFDouble::of(array).items.at(static_cast<std::size_t>(index));
}

CFURLRef CFURLCreateWithBytes(CFAllocatorRef /*allocator*/, const UInt8* bytes, CFIndex length,
                              CFStringEncoding encoding, CFURLRef base)
{
    EXPECT_EQ(encoding, kCFStringEncodingUTF8);
    EXPECT_EQ(base, nullptr);
    return static_cast<CFURLRef>(CFDouble::make(Type::url, bytesAt(bytes, length)));
}

} // extern "C"
