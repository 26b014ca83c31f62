#include "tests/VornMac/Composition/MacPreferences.h"

#include <gtest/gtest.h>

namespace vorn::testing {

MacPreferences& macPreferences()
{
    static MacPreferences preferences;
    return preferences;
}

namespace {

const MacPreferences::Value* find(const MacPreferences::Domains& domains, CFStringRef domain, CFStringRef key)
{
    const auto found = domains.find(CFDouble::of(domain).bytes);
    if (found == domains.end()) return nullptr;
    const auto value = found->second.find(CFDouble::of(key).bytes);
    return value == found->second.end() ? nullptr : &value->second;
}

} // namespace
} // namespace vorn::testing

using vorn::testing::CFDouble;
using vorn::testing::find;
using vorn::testing::macPreferences;

extern "C" {

CFPropertyListRef CFPreferencesCopyAppValue(CFStringRef key, CFStringRef application)
{
    const auto* value = find(macPreferences().unwritten, application, key);
    if (value == nullptr) value = find(macPreferences().read, application, key);
    if (value == nullptr) return nullptr;
    if (value->type == CFDouble::Type::boolean) {
        return CFRetain(value->bytes == "true" ? kCFBooleanTrue : kCFBooleanFalse);
    }
    return CFDouble::make(value->type, value->bytes);
}

void CFPreferencesSetAppValue(CFStringRef key, CFPropertyListRef value, CFStringRef application)
{
    ASSERT_NE(value, nullptr) << "none would remove the key";
    const CFDouble& set = CFDouble::of(value);
    macPreferences().unwritten[CFDouble::of(application).bytes][CFDouble::of(key).bytes] = {set.type, set.bytes};
}

Boolean CFPreferencesAppSynchronize(CFStringRef application)
{
    auto& preferences = macPreferences();
    const std::string& domain = CFDouble::of(application).bytes;
    const auto unwritten = preferences.unwritten.find(domain);
    if (unwritten != preferences.unwritten.end()) {
        if (!preferences.canWrite) return 0;
        for (const auto& [key, value] : unwritten->second) preferences.kept[domain][key] = value;
        preferences.unwritten.erase(unwritten);
    }
    preferences.read = preferences.kept;
    return 1;
}

} // extern "C"
