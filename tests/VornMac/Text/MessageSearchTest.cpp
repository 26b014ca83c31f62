#include "VornMac/Text/MessageSearch.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

const ExportedMessage message = [] {
    ExportedMessage made;
    made.text = "Zwei Karten für\nDONNERSTAG, Weiß & Söhne";
    made.links = {{"https://Museum.example/Tickets", {}}};
    made.attachments = {{"image/heic"}};
    return made;
}();

TEST(MessageSearch, FindsWordsWhateverTheirCase)
{
    for (const char* words : {"karten", "KARTEN", "für", "FÜR", "für\ndonner", "söhne", "WEIß", "museum.EXAMPLE",
                              "photo", "Image/HEIC", "  donnerstag \n"}) {
        EXPECT_TRUE(MessageSearch(words).finds(message)) << words;
    }
}

TEST(MessageSearch, FindsNothingElse)
{
    for (const char* words : {"Freitag", "kartenfür", "video", "https://museum.example/x", "guid", "donnerstag  weiß"})
        EXPECT_FALSE(MessageSearch(words).finds(message)) << words;
}

TEST(MessageSearch, FindsEverythingWithoutWords)
{
    for (const char* words : {"", "  ", "\n"}) {
        EXPECT_TRUE(MessageSearch(words).isEmpty());
        EXPECT_TRUE(MessageSearch(words).finds(message));
    }
    EXPECT_FALSE(MessageSearch("x").isEmpty());
}

} // namespace
} // namespace vorn
