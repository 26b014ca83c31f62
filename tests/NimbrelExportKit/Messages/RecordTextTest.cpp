#include "NimbrelExportKit/Messages/RecordText.h"
#include "NimbrelExportKit/Messages/MessageList.h"

#include <gtest/gtest.h>
#include <vector>

namespace vorn {
namespace {

using namespace std::string_literals;

TEST(RecordText, IsEmptyUntilGivenAText)
{
    EXPECT_TRUE(RecordText().empty());
    EXPECT_EQ(RecordText(), RecordText(""));
    EXPECT_EQ(RecordText("iMessage").size(), 8U);
}

TEST(RecordText, IsComparedByWhatItSays)
{
    EXPECT_EQ(RecordText("SMS"), RecordText("SMS"s));
    EXPECT_NE(RecordText("SMS"), RecordText("iMessage"));
    EXPECT_EQ(RecordText("SMS"), "SMS");
    EXPECT_EQ(RecordText("a\0b"s).size(), 3U);
}

TEST(RecordText, ACopyHasItsCharactersToItself)
{
    RecordText copy;
    {
        TextArena arena;
        const RecordText kept = arena.keep("kept");
        copy = kept;
        EXPECT_NE(copy.view().data(), kept.view().data());
    }
    EXPECT_EQ(copy, "kept"); // the address sanitizer watches
}

TEST(RecordText, IsMovedWithoutACopy)
{
    RecordText first("a text");
    const char* characters = first.view().data();
    const RecordText second = std::move(first);
    EXPECT_EQ(second.view().data(), characters);
    RecordText third("another");
    third = RecordText(second);
    EXPECT_EQ(third, "a text");
}

TEST(TextArena, KeepsTextsWhereTheyAreWhileItGrows)
{
    TextArena arena;
    std::vector<RecordText> texts;
    for (int i = 0; i < 50'000; ++i) texts.push_back(arena.keep("text number " + std::to_string(i)));
    texts.push_back(arena.keep(std::string(40'000'000, 'x'))); // more than a block
    texts.push_back(arena.keep(""));
    EXPECT_EQ(texts[0], "text number 0");
    EXPECT_EQ(texts[49'999], "text number 49999");
    EXPECT_EQ(texts[50'000].size(), 40'000'000U);
    EXPECT_TRUE(texts[50'001].empty());
}

TEST(TextArena, SharesOneTextAmongMany)
{
    TextArena arena;
    const RecordText kept = arena.keep("iMessage");
    const RecordText shared = TextArena::share(kept);
    EXPECT_EQ(shared.view().data(), kept.view().data());
}

ExportedMessage messageOf(TextArena& arena, std::string_view text)
{
    ExportedMessage message;
    message.text = arena.keep(text);
    return message;
}

TEST(MessageList, OutlivesBeingMoved)
{
    MessageList moved;
    {
        MessageList list;
        list.push_back(messageOf(list.arena(), "text in the arena"));
        moved = std::move(list);
    }
    EXPECT_EQ(moved[0].text, "text in the arena");
}

TEST(MessageList, ACopyIsIndependent)
{
    MessageList copy;
    {
        MessageList list;
        list.push_back(messageOf(list.arena(), "text in the arena"));
        copy = list;
        EXPECT_EQ(copy, list);
        copy.add().text = "one more";
        EXPECT_NE(copy, list);
    }
    ASSERT_EQ(copy.size(), 2U);
    EXPECT_EQ(copy.front().text, "text in the arena");
    EXPECT_EQ(copy.back().text, "one more");
}

} // namespace
} // namespace vorn
