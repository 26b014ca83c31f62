#include "tests/Platform/Keychain/MacKeychain.h"

#include "tests/support/apple/doubles/CFDoubles.h"

#include <gtest/gtest.h>

namespace vorn::testing {

MacKeychain& macKeychain()
{
    static MacKeychain keychain;
    return keychain;
}

namespace {

/// The status that a function fails with; 0 if it does not.
OSStatus begin(const char* function, const MacKeychain::Pairs& query)
{
    MacKeychain& keychain = macKeychain();
    keychain.calls.push_back({function, query});
    const auto failure = keychain.failures.find(function);
    return failure == keychain.failures.end() ? errSecSuccess : failure->second;
}

auto find(const MacKeychain::Pairs& query)
{
    return macKeychain().secrets.find({query.at("kSecAttrService"), query.at("kSecAttrAccount")});
}

} // namespace
} // namespace vorn::testing

using vorn::testing::begin;
using vorn::testing::CFDouble;
using vorn::testing::find;
using vorn::testing::macKeychain;
using vorn::testing::readable;

// NOLINTNEXTLINE(cppcoreguidelines-macro-usage): eleven constants of this form
#define SECURITY_CONSTANT(name)                                                                                        \
    static const CFDouble name##Object = CFDouble::constant(CFDouble::Type::string, #name);                            \
    extern "C" const CFStringRef name = name##Object.asString()

SECURITY_CONSTANT(kSecClass);
SECURITY_CONSTANT(kSecClassGenericPassword);
SECURITY_CONSTANT(kSecAttrService);
SECURITY_CONSTANT(kSecAttrAccount);
SECURITY_CONSTANT(kSecAttrLabel);
SECURITY_CONSTANT(kSecAttrAccessible);
SECURITY_CONSTANT(kSecAttrAccessibleAfterFirstUnlockThisDeviceOnly);
SECURITY_CONSTANT(kSecValueData);
SECURITY_CONSTANT(kSecReturnData);
SECURITY_CONSTANT(kSecMatchLimit);
SECURITY_CONSTANT(kSecMatchLimitOne);

extern "C" {

OSStatus SecItemCopyMatching(CFDictionaryRef query, CFTypeRef* result)
{
    const auto pairs = readable(query);
    if (const OSStatus failure = begin("SecItemCopyMatching", pairs)) return failure;
    if (macKeychain().found) {
        *result = *macKeychain().found;
        return errSecSuccess;
    }
    const auto kept = find(pairs);
    if (kept == macKeychain().secrets.end()) return errSecItemNotFound;
    *result = CFDouble::make(CFDouble::Type::data, kept->second);
    return errSecSuccess;
}

OSStatus SecItemAdd(CFDictionaryRef attributes, CFTypeRef* result)
{
    EXPECT_EQ(result, nullptr) << "who asks for a result has to release it";
    const auto pairs = readable(attributes);
    if (const OSStatus failure = begin("SecItemAdd", pairs)) return failure;
    if (find(pairs) != macKeychain().secrets.end()) return errSecDuplicateItem;
    macKeychain().secrets[{pairs.at("kSecAttrService"), pairs.at("kSecAttrAccount")}] = pairs.at("kSecValueData");
    return errSecSuccess;
}

OSStatus SecItemDelete(CFDictionaryRef query)
{
    const auto pairs = readable(query);
    if (const OSStatus failure = begin("SecItemDelete", pairs)) return failure;
    const auto kept = find(pairs);
    if (kept == macKeychain().secrets.end()) return errSecItemNotFound;
    macKeychain().secrets.erase(kept);
    return errSecSuccess;
}

} // extern "C"
