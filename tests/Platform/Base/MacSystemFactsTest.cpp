#include "Platform/Base/BundleInfo.h"
#include "Platform/Base/SystemFacts.h"
#include "tests/support/apple/doubles/CFDoubles.h"

#include <algorithm>
#include <optional>
#include <string>

#include <SystemConfiguration/SystemConfiguration.h>
#include <gtest/gtest.h>
#include <sys/sysctl.h>

namespace vorn::testing {
namespace {

using Type = CFDouble::Type;

/// The facts of a simulated Mac; empty where it has none.
struct Mac {
    std::optional<std::string> name, zone, locale, version;
    CFTypeRef bundleValue = nullptr; ///< of every key
};

Mac& mac()
{
    static Mac says;
    return says;
}

CFTypeRef textOrNull(const std::optional<std::string>& text)
{
    return text ? CFDouble::make(Type::string, *text) : nullptr;
}

class MacSystemFacts : public ::testing::Test {
protected:
    MacSystemFacts() { mac() = {}; }
    ~MacSystemFacts() override { EXPECT_EQ(liveCFObjects(), before_) << "objects leaked"; }

private:
    const std::size_t before_ = liveCFObjects();
};

TEST_F(MacSystemFacts, HaveTheNameThatTheUserGave)
{
    for (const std::string name : {"Ada’s MacBook", "東京 💻", ""}) {
        mac().name = name;
        EXPECT_EQ(computerName(), name);
    }
    mac().name.reset();
    EXPECT_EQ(computerName(), "");
}

TEST_F(MacSystemFacts, HaveTheProductsVersion)
{
    mac().version = "14.5";
    EXPECT_EQ(systemVersion(), (SystemVersion{14, 5, 0}));
    mac().version = "13.6.1";
    EXPECT_EQ(systemVersion(), (SystemVersion{13, 6, 1}));
    mac().version.reset();
    EXPECT_EQ(systemVersion(), (SystemVersion{0, 0, 0}));
}

TEST_F(MacSystemFacts, HaveTheZonesName)
{
    mac().zone = "Europe/Berlin";
    EXPECT_EQ(timeZoneIdentifier(), "Europe/Berlin");
    mac().zone.reset();
    EXPECT_EQ(timeZoneIdentifier(), "Etc/UTC");
}

TEST_F(MacSystemFacts, HaveTheLocaleAsALanguageTag)
{
    mac().locale = "zh-Hans_CN@rg=twzzzz";
    EXPECT_EQ(localeIdentifier(), "zh-Hans-CN-u-rg-twzzzz");
    mac().locale = "en_US_POSIX";
    EXPECT_EQ(localeIdentifier(), "en-US");
    mac().locale.reset();
    EXPECT_EQ(localeIdentifier(), "en-US");
}

TEST_F(MacSystemFacts, HaveTheBundlesTexts)
{
    EXPECT_EQ(mainBundleText("CFBundleShortVersionString"), std::nullopt);
    mac().bundleValue = CFDouble::make(Type::string, "2.5");
    EXPECT_EQ(mainBundleText("CFBundleShortVersionString"), "2.5");
    EXPECT_EQ(mainBundleText("\xFF"), std::nullopt);
    CFRelease(mac().bundleValue);
    mac().bundleValue = kCFBooleanTrue;
    EXPECT_EQ(mainBundleText("CFBundleShortVersionString"), std::nullopt);
}

} // namespace
} // namespace vorn::testing

using vorn::testing::mac;
using vorn::testing::textOrNull;

extern "C" {

CFStringRef SCDynamicStoreCopyComputerName(SCDynamicStoreRef store, CFStringEncoding* nameEncoding)
{
    EXPECT_EQ(store, nullptr);
    EXPECT_EQ(nameEncoding, nullptr);
    return static_cast<CFStringRef>(textOrNull(mac().name));
}

// Zones and locales are represented by their names.

CFTimeZoneRef CFTimeZoneCopySystem()
{
    return static_cast<CFTimeZoneRef>(textOrNull(mac().zone));
}

CFStringRef CFTimeZoneGetName(CFTimeZoneRef zone)
{
    return static_cast<CFStringRef>(static_cast<CFTypeRef>(zone));
}

CFLocaleRef CFLocaleCopyCurrent()
{
    return static_cast<CFLocaleRef>(textOrNull(mac().locale));
}

CFLocaleIdentifier CFLocaleGetIdentifier(CFLocaleRef locale)
{
    return static_cast<CFStringRef>(static_cast<CFTypeRef>(locale));
}

int sysctlbyname(const char* name, void* old, std::size_t* oldSize, void* new_, std::size_t newSize)
{
    EXPECT_STREQ(name, "kern.osproductversion"); // "kern.osrelease" is the kernel's version
    EXPECT_EQ(new_, nullptr);
    EXPECT_EQ(newSize, 0U);
    const auto& version = mac().version;
    if (!version || *oldSize < version->size() + 1) return -1;
    *oldSize = version->size() + 1;
    std::copy_n(version->c_str(), *oldSize, static_cast<char*>(old));
    return 0;
}

CFBundleRef CFBundleGetMainBundle()
{
    static int bundle = 0;
    return reinterpret_cast<CFBundleRef>(&bundle);
}

CFTypeRef CFBundleGetValueForInfoDictionaryKey(CFBundleRef /*bundle*/, CFStringRef /*key*/)
{
    return mac().bundleValue;
}

} // extern "C"
