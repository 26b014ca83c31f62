// The detector's work is linear in the size of any text. Counts steps, not time.
#include "NimbrelExportKit/Links/TextLinkDetector.h"
#include "tests/support/steps/StepCount.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using testing::stepsOf;

/// The beginning of a text, and the part that is repeated after it.
struct Hostile {
    const char* name;
    std::string_view head;
    std::string_view piece;
};

void PrintTo(const Hostile& hostile, std::ostream* out) // NOLINT(readability-identifier-naming): GoogleTest's
{
    *out << '"' << hostile.head << '"' << " and \"" << hostile.piece << "\" repeated";
}

constexpr Hostile texts[] = {
    {"Letters", "", "a"},
    {"Dots", "", "a."},
    {"Words", "", "one two. Three "},
    {"Links", "", "https://a.com/b "},
    {"LinksSideBySide", "", "a.com,"},
    {"RefusedForAnUnderscore", "", "_x.com/,"},
    {"RefusedForAnUnderscoreBeforeAFragment", "", "_x.com#:"},
    {"RefusedForAnUnderscoreBehindAnApostrophe", "", "/'_x.com"},
    {"RefusedForAnUnderscoreWithAQuery", "", "_x.com?*"},
    {"RefusedForAnUnderscoreWithAPort", "", "_x.com:1/;"},
    {"RefusedForAnUnderscoreWithAScheme", "", "_http://x.com/,"},
    {"RefusedForManyUnderscores", "", "___x.com/,"},
    {"RefusedAddresses", "", "?_1.2.3.4/"},
    {"RefusedFileNames", "", "x.sh?,"},
    {"RefusedFileNamesInBrackets", "", "x.sh?("},
    {"RefusedForASign", "", "@http://x.com/,"},
    {"RefusedHosts", "", "http://a_b.c_d/("},
    {"MailAddresses", "", "a.com+"},
    {"BadPorts", "", "a.com:99999/"},
    {"LongPorts", "a.com:", "1"},
    {"OpenBrackets", "http://a.com/", "("},
    {"LinksInOpenBrackets", "", "a.com/("},
    {"MismatchedBrackets", "", "a.com/()(]"},
    {"FullStops", "http://a.com/", "."},
    {"Marks", "", "a.com/.,"},
    {"QuotationMarks", "http://a.com/", "a\""},
    {"Apostrophes", "", "'a.com/'"},
    {"Entities", "http://a.com/", "&a;"},
    {"LongEntities", "", "a.com/&aaaaaaaa;"},
    {"Emoji", "http://a.com/a", "😀"},
    {"EmojiLabels", "", "😀."},
    {"Dashes", "http://a.com/a", ".–"},
    {"UserNames", "", "http://a:,"},
    {"LongUserNames", "http://", "a.b,"},
    {"ForeignUserNames", "", "http://é:"},
    {"Schemes", "", "http://"},
    {"OtherSchemes", "", "x://a.com/,"},
    {"SchemesInSchemes", "", "x://http://é"},
    {"LabelsBeforeAScheme", "", "a.a.a.a.http://"},
    {"Japanese", "http://a.com/", "あ"},
    {"JapaneseLinks", "", "a.comあ"},
    {"JapaneseLabels", "", "ああ.コム"},
    {"Titles", "http://a.com/b/", "《あ"},
    {"LinksWithTitles", "", "a.com/b/《あ"},
    {"Sentences", "", "a.com.Then'"},
    {"LocalHosts", "", "localhost:1"},
    {"LocalHostsWithPaths", "", "localhost:1/,"},
    {"ShortenedLinks", "", "t.co/a?"},
    {"IllFormedBytes", "", "\xC3.\xFF"},
};

std::string repeated(const Hostile& hostile, std::size_t size)
{
    std::string text(hostile.head);
    while (text.size() < size) text += hostile.piece;
    return text;
}

std::uint64_t stepsToFindLinks(const std::string& text)
{
    return stepsOf([&text] {
        std::vector<std::string> urls;
        TextLinkDetector().find(text, urls);
    });
}

struct LinkSteps : ::testing::TestWithParam<Hostile> {};

TEST_P(LinkSteps, GrowWithTheTextAndNoFaster)
{
    constexpr std::size_t size = 1U << 14U;
    const std::uint64_t few = stepsToFindLinks(repeated(GetParam(), size));
    const std::uint64_t many = stepsToFindLinks(repeated(GetParam(), 8 * size));
    EXPECT_GT(few, size / 16) << "nothing was counted";
    EXPECT_LE(many, 12 * few);
    EXPECT_LE(many, 100 * 8 * size) << "each byte is read a few times, not hundreds of times";
}

INSTANTIATE_TEST_SUITE_P(Texts, LinkSteps, ::testing::ValuesIn(texts),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST(LinkDetectorWork, EndsSoonAfterACancelInTheMiddleOfALongText)
{
    const std::string text = repeated({"", "", "a.com, "}, 1U << 20U);
    CancelFlag cancel;
    const std::uint64_t steps = stepsOf(
        [&] {
            std::vector<std::string> urls;
            EXPECT_THROW(TextLinkDetector(cancel).find(text, urls), Cancelled);
        },
        10'000, [&cancel] { cancel.cancel(); });
    EXPECT_GT(steps, 10'000U);
    EXPECT_LT(steps, 11'000U);
}

} // namespace
} // namespace vorn
