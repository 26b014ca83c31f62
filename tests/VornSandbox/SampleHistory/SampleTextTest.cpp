#include "VornSandbox/SampleHistory/SampleText.h"

#include "Platform/Base/Text.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace vorn {
namespace {

TEST(SampleText, IsCleanAndCompleteInEveryVoice)
{
    SampleRandom random(3);
    SampleText text(random);
    std::string composed;
    for (const SampleVoice voice : {SampleVoice::prompt, SampleVoice::reply, SampleVoice::chatter}) {
        for (int i = 0; i < 2'000; ++i) {
            text.compose(voice, composed);
            SCOPED_TRACE(composed);
            ASSERT_TRUE(text::isWellFormed(composed));
            ASSERT_FALSE(composed.empty());
            ASSERT_EQ(text::trimmed(composed), composed);
            ASSERT_EQ(composed.find('#'), std::string::npos) << "every placeholder is filled";
            ASSERT_EQ(composed.find("\uFFFC"), std::string::npos);
            ASSERT_EQ(composed.find("://"), std::string::npos);
        }
    }
}

TEST(SampleText, SpeaksManyScripts)
{
    SampleRandom random(4);
    SampleText text(random);
    std::string all;
    std::string composed;
    for (int i = 0; i < 3'000; ++i) {
        text.compose(SampleVoice::reply, composed);
        all += composed;
    }
    const std::u32string scalars = text::scalars(all);
    const auto holds = [&](char32_t first, char32_t last) {
        return std::ranges::any_of(scalars, [&](char32_t scalar) { return scalar >= first && scalar <= last; });
    };
    EXPECT_TRUE(holds(0x0627, 0x064A)) << "Arabic";
    EXPECT_TRUE(holds(0x05D0, 0x05EA)) << "Hebrew";
    EXPECT_TRUE(holds(0x3041, 0x3096)) << "Hiragana";
    EXPECT_TRUE(holds(0x4E00, 0x9FFF)) << "Han";
    EXPECT_TRUE(holds(0xAC00, 0xD7A3)) << "Hangul";
    EXPECT_TRUE(holds(0x0905, 0x0939)) << "Devanagari";
    EXPECT_TRUE(holds(0x1F1E6, 0x1F1FF)) << "flags";
    EXPECT_TRUE(holds(0x200D, 0x200D)) << "joined emoji";
    EXPECT_TRUE(holds(0x1F3FB, 0x1F3FF)) << "skin tones";
}

TEST(SampleText, LinksEndWhereNoDetectorIsInDoubt)
{
    SampleRandom random(5);
    SampleText text(random);
    std::string link;
    for (int i = 0; i < 500; ++i) {
        text.link(link);
        SCOPED_TRACE(link);
        ASSERT_TRUE(link.starts_with("https://") || link.starts_with("http://"));
        ASSERT_TRUE(std::isalnum(static_cast<unsigned char>(link.back())));
    }
}

} // namespace
} // namespace vorn
