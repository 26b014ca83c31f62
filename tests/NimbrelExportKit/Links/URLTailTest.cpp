#include "NimbrelExportKit/Links/URLTail.h"

#include <string>

#include <gtest/gtest.h>

namespace vorn::links {
namespace {

struct Case {
    std::string_view text;
    std::string_view tail;
};

void expectTails(std::initializer_list<Case> cases, char before = '\0')
{
    for (const auto& [text, tail] : cases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(text.substr(0, tailEnd(text, 0, before)), tail);
    }
}

TEST(URLTail, KeepsPathsQueriesAndFragments)
{
    expectTails({
        {"/", "/"},
        {"//", "//"},
        {"/a/b.html?c=d&e[]=f#g", "/a/b.html?c=d&e[]=f#g"},
        {"?q=1", "?q=1"},
        {"#top", "#top"},
        {"/#", "/#"},
        {"/@48.85,2.29,17z", "/@48.85,2.29,17z"},
        {"/a;b=1,2/~me/$x+y=", "/a;b=1,2/~me/$x+y="},
        {"/a%20b%zz", "/a%20b%zz"},
        {"/x-", "/x-"},
        {"/x_", "/x_"},
        {"/./..//!/x", "/./..//!/x"},
    });
}

TEST(URLTail, EndsAtWhatNoURLHolds)
{
    expectTails({
        {"/a b", "/a"},
        {"/a\tb", "/a"},
        {"/a\nb", "/a"},
        {"/a<b>", "/a"},
        {"/a>b", "/a"},
        {"/a`b`", "/a"},
        {"/a\\b", "/a"},
        {"/a\u00A0b", "/a"},
        {"/a\u3000b", "/a"},
        {"/a\u202Cb", "/a"},
        {std::string_view("/a\0b", 4), "/a"},
        {"/a\x7F", "/a"},
    });
}

TEST(URLTail, LeavesOutSentencePunctuation)
{
    expectTails({
        {"/a.", "/a"},
        {"/a...", "/a"},
        {"/a,", "/a"},
        {"/a?!", "/a"},
        {"/a:", "/a"},
        {"/a;", "/a"},
        {"/a*", "/a"},
        {"/a…", "/a"},
        {"/a–", "/a"},
        {"/a。", "/a"},
        {"/a！", "/a"},
        {"/a）", "/a"},
        {"/a」", "/a"},
        {"?", ""},
        {"#", ""},
        {"/a&amp;", "/a"},
        {"/a?b=c&gt;.", "/a?b=c"},
    });
}

TEST(URLTail, KeepsBalancedBrackets)
{
    expectTails({
        {"/a_(b)", "/a_(b)"},
        {"/a_(b)_(c)", "/a_(b)_(c)"},
        {"/a_(b_(c))", "/a_(b_(c))"},
        {"/a[b]{c}", "/a[b]{c}"},
        {"/a(b).", "/a(b)"},
        {"/a)", "/a"},
        {"/a).", "/a"},
        {"/a.)", "/a"},
        {"/a])}", "/a"},
        {"/a(b))", "/a(b)"},
        {"/a(b]", "/a"},
        {"/a(see there", "/a"},
        {"/a_(", "/a_"},
        {"/a?b=(c))+d", "/a?b=(c))+d"},
        {"/a_(b).)and", "/a_(b)"},
    });
}

TEST(URLTail, EndsWithBracketsDeeperThanAnyAddressHas)
{
    const std::string deep = "/" + std::string(100, '(') + std::string(100, ')');
    EXPECT_EQ(tailEnd(deep, 0, '\0'), 1U);
}

TEST(URLTail, LeavesOutTheQuotationMarksOfTheText)
{
    expectTails({{"/a\"", "/a"},
                 {"/a\" b\"", "/a"},
                 {"/\"a\"", "/"},
                 {"/it's", "/it's"},
                 {"/a'", "/a"},
                 {"/a”", "/a"},
                 {"/a»", "/a"}});
    expectTails({{"/a'", "/a"}, {"/a', '/b'", "/a"}}, '\'');
    expectTails({{"/a\"b\"", "/a"}}, '"');
    expectTails({{"/a_", "/a"}, {"/a_b", "/a_b"}}, '_');
    expectTails({{"/a~", "/a"}}, '~');
}

TEST(URLTail, KeepsQuotationMarksInsideAWord)
{
    expectTails({
        {"/the_\"best\"_of", "/the_\"best\"_of"},
        {"/'quoted'", "/'quoted'"},
        {"/rock'n'roll", "/rock'n'roll"},
        {"/jeanne-d’arc", "/jeanne-d’arc"},
        {"/48°51'30\"N+2°17'40\"E/", "/48°51'30\"N+2°17'40\"E/"},
    });
}

TEST(URLTail, LeavesOutAPossessive)
{
    expectTails({
        {"/anna's picture", "/anna"},
        {"/anna’s picture", "/anna"},
        {"/anna's", "/anna's"},
        {"/anna's/album", "/anna's/album"},
    });
}

TEST(URLTail, KeepsTextOfOtherLanguages)
{
    expectTails({
        {"/größe", "/größe"},
        {"/Москва_река", "/Москва_река"},
        {"/aМосква", "/aМосква"},
        {"/wiki/東京", "/wiki/東京"},
        {"/wiki/東京/地図?場所=駅#出口", "/wiki/東京/地図?場所=駅#出口"},
        {"/name-東京.pdf", "/name-東京.pdf"},
        {"/शब्द", "/शब्द"},
        {"/😀", "/😀"},
        {"/😀/a", "/😀/a"},
        {"/a😀b", "/a😀b"},
        {"/2010–2012", "/2010–2012"},
    });
}

TEST(URLTail, LeavesOutTheNeighbouringSentence)
{
    expectTails({
        {"/index.htmlを見て", "/index.html"},
        {"/aשלום", "/a"},
        {"/aمرحبا", "/a"},
        {"/aไทย", "/a"},
        {"/a한국", "/a"},
        {"/を見て", "/"},
        {"/ここが面白い。次", "/"},
        {"/ここ", "/ここ"},
        {"/wiki/東京。", "/wiki/東京"},
        {"/a😀", "/a"},
        {"/a👍🏽!", "/a"},
    });
}

TEST(URLTail, KeepsTitlesInTheBracketsOfTheirScript)
{
    expectTails({
        {"/wiki/《紅樓夢》", "/wiki/《紅樓夢》"},
        {"/wiki/「山」と川", "/wiki/「山」と川"},
        {"/wiki/“长城”历史。", "/wiki/“长城”历史"},
        {"/《紅樓夢》", "/"},
        {"/wiki/《紅樓夢", "/wiki/"},
        {"/wiki/《red》", "/wiki/"},
        {"/wiki/《紅樓夢」", "/wiki/"},
        {"/wiki/紅樓夢《一》", "/wiki/紅樓夢"},
        {"/wiki/”", "/wiki/"},
    });
}

TEST(URLTail, KeepsFullWidthMarksInsideNames)
{
    expectTails({
        {"/menu/抹茶＆小豆", "/menu/抹茶＆小豆"},
        {"/img/元気？.jpg", "/img/元気？.jpg"},
        {"/img/元気？", "/img/元気"},
        {"/img/元気？.", "/img/元気"},
        {"/a，.b", "/a，.b"},
    });
}

TEST(URLTail, KeepsBarsInQueriesOnly)
{
    expectTails({{"/a|b", "/a"}, {"/a?b|c", "/a?b|c"}, {"/#b|c|", "/#b|c"}});
}

TEST(URLTail, EndsTheCodeOfAShortenedLink)
{
    constexpr std::string_view text = "/Ab3-and";
    EXPECT_EQ(tailEnd(text, 0, '\0', "t.co"), 4U);
    EXPECT_EQ(tailEnd(text, 0, '\0', "a.co"), text.size());
    EXPECT_EQ(tailEnd("/Ab3?x=1-2", 0, '\0', "t.co"), 10U);
    EXPECT_EQ(tailEnd("/-", 0, '\0', "t.co"), 2U);
}

} // namespace
} // namespace vorn::links
