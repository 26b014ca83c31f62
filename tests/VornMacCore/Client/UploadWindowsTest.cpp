#include "tests/VornMacCore/Client/UploadFixture.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace vorn {
namespace {

using namespace testing;
using nlohmann::json;
using ::testing::ElementsAre;
using PartRefused = UploadError::PartRefused;

/// The windows asked for, as (first, count).
std::vector<std::pair<int, int>> windows(const UploadFixture& fix)
{
    std::vector<std::pair<int, int>> found;
    const auto lines = fix.requests();
    for (std::size_t index = 0; index < lines.size(); ++index) {
        if (lines[index] != askingForURLs) continue;
        const json body = fix.bodyOf(index);
        EXPECT_EQ(body.size(), 2U);
        found.emplace_back(body.at("fromPart"), body.at("count"));
    }
    return found;
}

TEST(UploadWindows, AreAskedForFiftyAtATimeWhenPartsHaveNoURL)
{
    UploadFixture fix(std::string(120, 'x'), 1);
    fix.opens({});
    std::vector<std::string> expected{opening};
    for (int part = 1; part <= 120; ++part) {
        if (part % 50 == 1) {
            fix.givesURLs(part, fix.urlsOf(part, std::min(part + 49, 120)));
            expected.push_back(askingForURLs);
        }
        fix.takesPart();
        expected.push_back(putting(part));
    }
    fix.completes();
    expected.push_back(completing);
    fix.upload();
    EXPECT_EQ(fix.requests(), expected);
    EXPECT_THAT(windows(fix), ElementsAre(std::pair(1, 50), std::pair(51, 50), std::pair(101, 20)));
}

TEST(UploadWindows, AreNotAskedForWhileThereAreURLs)
{
    UploadFixture fix("abc", 1);
    fix.opens(fix.urlsOf(1, 3));
    for (int part = 1; part <= 3; ++part) fix.takesPart();
    fix.completes();
    fix.upload();
    EXPECT_THAT(windows(fix), ElementsAre());
}

TEST(UploadWindows, BeginAtTheFirstPartWithoutAURL)
{
    UploadFixture fix("abcd", 1);
    fix.opens(fix.urlsOf(1, 2));
    fix.takesPart();
    fix.takesPart();
    fix.givesURLs(3, fix.urlsOf(3, 4));
    fix.takesPart();
    fix.takesPart();
    fix.completes();
    fix.upload();
    EXPECT_THAT(fix.requests(),
                ElementsAre(opening, putting(1), putting(2), askingForURLs, putting(3), putting(4), completing));
    EXPECT_THAT(windows(fix), ElementsAre(std::pair(3, 2)));
}

TEST(UploadWindows, MayBringFewerURLsThanAskedFor)
{
    UploadFixture fix("abc", 1);
    fix.opens({});
    for (int part = 1; part <= 3; ++part) {
        fix.givesURLs(part, fix.urlsOf(part, part));
        fix.takesPart();
    }
    fix.completes();
    fix.upload();
    EXPECT_THAT(windows(fix), ElementsAre(std::pair(1, 3), std::pair(2, 2), std::pair(3, 1)));
}

TEST(UploadWindows, ReplaceTheURLsOfLaterPartsToo)
{
    UploadFixture fix("ab", 1);
    fix.opens(fix.urlsOf(1, 2));
    fix.answersPart(403);
    fix.givesURLs(1, fix.urlsOf(11, 12));
    fix.takesPart();
    fix.takesPart();
    fix.completes();
    fix.upload();
    EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1), askingForURLs, putting(11), putting(12), completing));
}

TEST(UploadWindows, KeepTheURLsThatTheyDoNotMention)
{
    UploadFixture fix("abc", 1);
    fix.opens(fix.urlsOf(1, 3));
    fix.answersPart(403);
    fix.givesURLs(1, {fix.urlOf(11)});
    for (int part = 1; part <= 3; ++part) fix.takesPart();
    fix.completes();
    fix.upload();
    EXPECT_THAT(fix.requests(),
                ElementsAre(opening, putting(1), askingForURLs, putting(11), putting(2), putting(3), completing));
}

TEST(UploadWindows, WithoutThePartsURLEndTheUpload)
{
    UploadFixture fix("abc", 1);
    fix.opens(fix.urlsOf(1, 1));
    fix.takesPart();
    fix.givesURLs(3, fix.urlsOf(3, 3));
    fix.aborts();
    EXPECT_EQ(fix.uploadFails<UploadError>(), UploadError(PartRefused{2, 0}));
    EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1), askingForURLs, aborting));
}

TEST(UploadRefresh, SendsAForbiddenPartOnceMoreToAFreshURL)
{
    UploadFixture fix("abcd", 1);
    fix.opens(fix.urlsOf(1, 4));
    fix.takesPart();
    fix.answersPart(403);
    fix.givesURLs(2, fix.urlsOf(12, 14));
    fix.takesPart("\"again\"");
    fix.takesPart();
    fix.takesPart();
    fix.completes();
    fix.upload();
    EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1), putting(2), askingForURLs, putting(12), putting(13),
                                            putting(14), completing));
    EXPECT_THAT(windows(fix), ElementsAre(std::pair(2, 3)));
    EXPECT_EQ(fix.server.requests().at(4).body, "b");
    EXPECT_EQ(fix.bodyOf(7)["parts"].size(), 4U);
    EXPECT_EQ(fix.bodyOf(7)["parts"][1]["etag"], "\"again\"");
}

TEST(UploadRefresh, EndsWithTheSecondForbiddenAnswer)
{
    UploadFixture fix("abc");
    fix.opens(fix.urlsOf(1, 1));
    fix.answersPart(403);
    fix.givesURLs(1, fix.urlsOf(11, 11));
    fix.answersPart(403);
    fix.aborts();
    EXPECT_STREQ(fix.uploadFails<UploadError>().what(), "part 1 refused with 403");
    EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1), askingForURLs, putting(11), aborting));
}

TEST(UploadRefresh, UsesTheOldURLAgainWhenTheWindowBringsNone)
{
    UploadFixture fix("abc");
    fix.opens(fix.urlsOf(1, 1));
    fix.answersPart(403);
    fix.givesURLs(1, {});
    fix.takesPart();
    fix.completes();
    fix.upload();
    EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1), askingForURLs, putting(1), completing));
}

TEST(UploadRefresh, IsSpentByTheFetchOfAMissingURL)
{
    UploadFixture fix("abc");
    fix.opens({});
    fix.givesURLs(1, fix.urlsOf(1, 1));
    fix.answersPart(403);
    fix.aborts();
    EXPECT_EQ(fix.uploadFails<UploadError>(), UploadError(PartRefused{1, 403}));
    EXPECT_THAT(fix.requests(), ElementsAre(opening, askingForURLs, putting(1), aborting));
}

TEST(UploadRefresh, CountsForOnePartOnly)
{
    UploadFixture fix("abc", 1);
    fix.opens({});
    fix.givesURLs(1, fix.urlsOf(1, 3)); // counts as the first part's refresh
    fix.takesPart();
    fix.answersPart(403);
    fix.givesURLs(2, fix.urlsOf(12, 13));
    fix.takesPart();
    fix.answersPart(403);
    fix.givesURLs(3, fix.urlsOf(23, 23));
    fix.takesPart();
    fix.completes();
    fix.upload();
    EXPECT_THAT(fix.requests(), ElementsAre(opening, askingForURLs, putting(1), putting(2), askingForURLs, putting(12),
                                            putting(13), askingForURLs, putting(23), completing));
    EXPECT_THAT(windows(fix), ElementsAre(std::pair(1, 3), std::pair(2, 2), std::pair(3, 1)));
}

TEST(UploadRefresh, OfAWindowWithAnUnusableURLEndsTheUpload)
{
    UploadFixture fix("abc");
    fix.opens(fix.urlsOf(1, 1));
    fix.answersPart(403);
    fix.givesURLs(1, {"no url"});
    fix.aborts();
    EXPECT_EQ(fix.uploadFails<UploadError>(), UploadError(PartRefused{1, 0}));
    EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1), askingForURLs, aborting));
}

} // namespace
} // namespace vorn
