#include "VornMacCore/Wire/DeviceIdentity.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/SystemTools.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>

namespace vorn {
namespace {

using ::testing::Optional;
using testing::ScopedEnvironment;
namespace systemTools = testing::systemTools;

const Bundle bundle(Bundle::Values{{"CFBundleShortVersionString", "2.5"}});

std::string times(std::size_t count, const std::string& text)
{
    std::string result;
    for (std::size_t each = 0; each < count; ++each) result += text;
    return result;
}

std::string sentName(const std::string& computerName)
{
    return DeviceIdentity::linkRequest(bundle, computerName, {14, 5, 0}).deviceName;
}

TEST(LinkRequest, TellsFourThings)
{
    EXPECT_EQ(DeviceIdentity::linkRequest(bundle, "Ada’s Mac", {14, 2, 1}),
              (CreateDeviceLinkRequest{"Ada’s Mac", "macos", "2.5", "macOS 14.2.1"}));
}

TEST(LinkRequest, SendsTheFirstEightyCharactersOfTheComputersName)
{
    const std::string family = "👨‍👩‍👧‍👦", flag = "🇩🇪", accent = "e\u0301";
    struct Case {
        std::string name, computer, sent;
    };
    const std::vector<Case> cases = {
        {"none", "", "Mac"},
        {"short", "Studio", "Studio"},
        {"80", times(80, "x"), times(80, "x")},
        {"100", times(100, "x"), times(80, "x")},
        {"100 letters of two bytes", times(100, "é"), times(80, "é")},
        {"80 joined emoji", times(80, family), times(80, family)},
        {"joined emoji at the cut", times(79, "x") + family + family, times(79, "x") + family},
        {"flag at the cut", times(79, "x") + flag + flag, times(79, "x") + flag},
        {"accent at the cut", times(79, "x") + accent + "y", times(79, "x") + accent},
        {"joined emoji beyond the cut", times(80, "x") + family, times(80, "x")},
        {"accent of the last one", times(80, "x") + "\u0301", times(80, "x") + "\u0301"},
    };
    for (const auto& [name, computer, sent] : cases) {
        SCOPED_TRACE(name);
        EXPECT_EQ(sentName(computer), sent);
    }
}

TEST(LinkRequest, SendsTheFirstThirtyTwoCharactersOfVersions)
{
    const Bundle wordy(Bundle::Values{{"CFBundleShortVersionString", times(40, "1")}});
    EXPECT_EQ(DeviceIdentity::linkRequest(wordy, "Mac", {14, 5, 0}).appVersion, times(32, "1"));
    constexpr int most = 2'147'483'647;
    EXPECT_THAT(DeviceIdentity::linkRequest(bundle, "Mac", {most, most, most}).osVersion,
                Optional(std::string("macOS 2147483647.2147483647.2147")));
}

TEST(LinkRequest, DescribesThisComputer)
{
    EXPECT_EQ(DeviceIdentity::linkRequest(bundle),
              (CreateDeviceLinkRequest{systemTools::computerName(), "macos", "2.5", systemTools::osVersion()}));
    EXPECT_EQ(DeviceIdentity::computerName(), systemTools::computerName());
}

TEST(DeviceSignals, CutTheLocaleAfterSixteenCharacters)
{
    EXPECT_EQ(deviceSignals("Europe/Berlin", "en-US"), (DeviceSignals{"Europe/Berlin", "en-US"}));
    EXPECT_EQ(deviceSignals("America/Argentina/ComodRivadavia", "zh-Hans-CN-u-ca-chinese-nu-hanidec"),
              (DeviceSignals{"America/Argentina/ComodRivadavia", "zh-Hans-CN-u-ca-"}));
}

TEST(DeviceSignals, HaveTheZoneOfThisComputer)
{
    const ScopedEnvironment zone("TZ", "Asia/Tokyo");
    EXPECT_EQ(currentDeviceSignals().timezone, "Asia/Tokyo");
}

} // namespace
} // namespace vorn
