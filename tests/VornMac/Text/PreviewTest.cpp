#include "VornMac/Text/Preview.h"

#include <string>

#include <gmock/gmock.h>

namespace vorn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

ExportedMessage message(const std::string& text)
{
    ExportedMessage result;
    result.text = text;
    return result;
}

std::string previewed(const ExportedMessage& message)
{
    return previewOf({message}).at(0).text;
}

std::string repeated(const std::string& text, int count)
{
    std::string result;
    while (count-- > 0) result += text;
    return result;
}

TEST(Preview, ShowsTheLastSixMessagesAndWhoWroteThem)
{
    MessageList messages;
    for (int number = 1; number <= 40; ++number) {
        messages.push_back(message(std::to_string(number)));
        messages.back().fromMe = number % 2 == 1;
    }
    using P = PreviewedMessage;
    EXPECT_THAT(previewOf(messages), ElementsAre(P{"35", true}, P{"36", false}, P{"37", true}, P{"38", false},
                                                 P{"39", true}, P{"40", false}));
}

TEST(Preview, ShowsAllOfAFew)
{
    using P = PreviewedMessage;
    EXPECT_THAT(previewOf({message("a"), message("b"), message("c")}), ElementsAre(P{"a"}, P{"b"}, P{"c"}));
    EXPECT_THAT(previewOf({}), IsEmpty());
}

TEST(Preview, CutsAfterOneHundredAndFortyCharacters)
{
    // Each is one character to a reader, however many scalars it has.
    for (const std::string character : {"x", "é", "e\u0301", "👩‍👩‍👧", "🇩🇪"}) {
        SCOPED_TRACE(character);
        const std::string whole = repeated(character, 140);
        EXPECT_EQ(previewed(message(whole)), whole);
        EXPECT_EQ(previewed(message(whole + character)), whole + "…");
    }
}

TEST(Preview, KeepsLineBreaks)
{
    EXPECT_EQ(previewed(message("Lupa\nFriday, 7:30")), "Lupa\nFriday, 7:30");
}

TEST(Preview, ShowsControlCharactersAsWhatCannotBeShown)
{
    using namespace std::string_literals;
    EXPECT_EQ(previewed(message("\x1B[31mred\x07 a\0b\x7F \u009B2J"s)), "\uFFFD[31mred\uFFFD a\uFFFDb\uFFFD \uFFFD2J");
    EXPECT_EQ(previewed(message("one\ttab\r\nand\ra line")), "one tab\nand\uFFFDa line");
    EXPECT_EQ(previewed(message("\u200Fשלום\u200F")), "\u200Fשלום\u200F") << "marks of direction are no controls";
    EXPECT_EQ(previewed(message(std::string(141, '\x01'))), repeated("\uFFFD", 140) + "…");
}

TEST(Preview, HasAWordForWhatHasNoText)
{
    ExportedMessage photo = message("");
    photo.attachments.push_back({"image/jpeg"});
    EXPECT_EQ(previewed(photo), "Attachment");
    EXPECT_EQ(previewed(message("")), "…");
    photo.text = "Look";
    EXPECT_EQ(previewed(photo), "Look");
}

TEST(SpokenText, SaysWhoWroteIt)
{
    EXPECT_EQ(spokenText({"Hello", true}), "You: Hello");
    EXPECT_EQ(spokenText({"Hello", false}), "Nimbrel: Hello");
}

TEST(ExampleConversation, GoesToAndFro)
{
    const std::vector<PreviewedMessage> example = exampleConversation();
    EXPECT_EQ(example.front(), (PreviewedMessage{"Find me a dinner spot for Friday", true}));
    EXPECT_EQ(example.back(), (PreviewedMessage{"Done. I'll remind you Friday at 5 pm.", false}));
    EXPECT_EQ(example.size(), 5U);
}

} // namespace
} // namespace vorn
