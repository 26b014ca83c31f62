#include "VornMac/Text/EverythingText.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

SkipTally tally(std::map<std::string, std::int64_t, std::less<>> counts)
{
    return {std::move(counts)};
}

TEST(LeftOut, HasARowForEachReasonAndSaysWhy)
{
    using Row = LeftOutRow;
    EXPECT_THAT(leftOutRows(tally({{"empty", 4}, {"reaction", 1204}, {"system", 3}, {"undated", 5}, {"unsent", 2}})),
                ElementsAre(Row{"Reactions", "1,204", "Hearts, thumbs and other tapbacks."},
                            Row{"Unsent messages", "2", "Their senders unsent them."},
                            Row{"Notices", "3", "Notes by Messages itself, such as a changed name."},
                            Row{"Empty messages", "4", "They have neither text nor attachments."},
                            Row{"Undated messages", "5", "They come before the first message with a date."}));
}

TEST(LeftOut, CountsReasonsThatItDoesNotKnow)
{
    EXPECT_THAT(leftOutRows(tally({{"new", 7}})), ElementsAre(LeftOutRow{"new", "7", ""}));
}

TEST(LeftOut, SaysWhatIsNeverRead)
{
    EXPECT_THAT(leftOutRows({}), IsEmpty());
    EXPECT_EQ(leftOutNote({}), "No message of this chat. The files of attachments are never read.");
    EXPECT_EQ(leftOutNote(tally({{"empty", 1}})), "The files of attachments are never read.");
}

TEST(Besides, TellsOfIdentifiersAndAddresses)
{
    NimbrelExportResult result;
    result.chats = {{1, "guid-1", "+15550102030", {}}, {2, "guid-2", "n@x.example", {}}};
    EXPECT_THAT(
        besideTexts(result),
        ElementsAre(
            "For each message: its identifier in Messages, its chat's and, in a reply, that of the original message.",
            "Nimbrel's addresses (+15550102030, n@x.example), these counts, the time of the export, and the versions "
            "of Vorn and macOS."));
}

TEST(Listed, CountsMessages)
{
    EXPECT_EQ(listedText(0, 1204, false), "1,204 messages");
    EXPECT_EQ(listedText(0, 1, false), "1 message");
    EXPECT_EQ(listedText(12, 1204, true), "12 of 1,204 messages");
    EXPECT_EQ(listedText(0, 1, true), "0 of 1 message");
    EXPECT_EQ(nothingFoundText("tram"), "No message contains “tram”.");
}

TEST(Copy, SaysHowSavingGoes)
{
    EXPECT_EQ(copyText(phase::Idle{}), StatusText{});
    EXPECT_EQ(copyText(phase::Preparing{}), (StatusText{Tone::waiting, "Packing your chat…"}));
    EXPECT_EQ(copyText(phase::Saved{"chat.zip"}), (StatusText{Tone::good, "Saved as chat.zip on this Mac."}));
    EXPECT_EQ(copyText(phase::Failed{"Full."}), (StatusText{Tone::bad, "Full."}));
}

} // namespace
} // namespace vorn
