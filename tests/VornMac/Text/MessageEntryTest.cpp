#include "VornMac/Text/MessageEntry.h"

#include "tests/support/ScopedEnvironment.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Entry : public ::testing::Test {
protected:
    Entry()
    {
        message_.sentAt = 1'772'356'500; // 2026-03-01T09:15:00Z
        message_.text = "Hello";
    }
    MessageEntry entry() const { return entryOf(message_, LocalDates()); }

    testing::ScopedEnvironment language_{"LC_ALL", "en_GB.UTF-8"};
    testing::ScopedEnvironment zone_{"TZ", "Europe/London"};
    ExportedMessage message_;
};

TEST_F(Entry, SaysWhoWroteWhatAndWhen)
{
    const MessageEntry reply = entry();
    EXPECT_EQ(reply.day, "1 Mar 2026");
    EXPECT_EQ(reply.time, "09:15:00");
    EXPECT_EQ(reply.author, "Nimbrel");
    EXPECT_FALSE(reply.fromMe);
    EXPECT_EQ(reply.text, "Hello");
    EXPECT_EQ(reply.rest, "");
    EXPECT_EQ(detailText(reply), "09:15:00");
    EXPECT_EQ(spokenText(reply), "Nimbrel, 1 Mar 2026, 09:15:00\nHello");
    message_.fromMe = true;
    EXPECT_EQ(entry().author, "You");
    EXPECT_TRUE(entry().fromMe);
}

TEST_F(Entry, HoldsEverythingThatHangsOnAMessage)
{
    message_.service = RecordText("iMessage");
    message_.edited = true;
    message_.replyToGuid = RecordText("guid-1");
    message_.links = {{"https://one.example/", {}}, {"https://two.example/", {}}};
    message_.attachments = {{"image/jpeg"}, {"application/pdf"}};
    const MessageEntry all = entry();
    EXPECT_THAT(all.remarks, ElementsAre("iMessage", "Edited", "Reply"));
    EXPECT_EQ(detailText(all), "09:15:00 · iMessage · Edited · Reply");
    EXPECT_EQ(linesOf(all.links), "https://one.example/\nhttps://two.example/");
    EXPECT_EQ(linesOf(all.attachments), "Photo (image/jpeg)\nFile (application/pdf)");
    EXPECT_EQ(spokenText(all),
              "Nimbrel, 1 Mar 2026, 09:15:00 · iMessage · Edited · Reply\nHello\nhttps://one.example/\n"
              "https://two.example/\nPhoto (image/jpeg)\nFile (application/pdf)");
}

TEST_F(Entry, NamesKindsOfAttachments)
{
    EXPECT_EQ(attachmentText("image/heic"), "Photo (image/heic)");
    EXPECT_EQ(attachmentText("video/quicktime"), "Video (video/quicktime)");
    EXPECT_EQ(attachmentText("audio/x-caf"), "Audio (audio/x-caf)");
    EXPECT_EQ(attachmentText("application/octet-stream"), "File (application/octet-stream)");
    EXPECT_EQ(attachmentText("\x1B[2J"), "File (\uFFFD[2J)");
}

TEST_F(Entry, HasNoTextWhereThereIsNone)
{
    message_.text = RecordText();
    message_.attachments = {{"image/jpeg"}};
    EXPECT_EQ(entry().text, "");
    EXPECT_EQ(spokenText(entry()), "Nimbrel, 1 Mar 2026, 09:15:00\nPhoto (image/jpeg)");
}

TEST_F(Entry, ShowsWhatCannotBeDrawnAsThat)
{
    message_.text = RecordText("a\x07\r\nb");
    message_.service = RecordText("S\x1BMS");
    message_.links = {{"https://x.example/\x7F", {}}};
    EXPECT_EQ(entry().text, "a\uFFFD\nb");
    EXPECT_THAT(entry().remarks, ElementsAre("S\uFFFDMS"));
    EXPECT_THAT(entry().links, ElementsAre("https://x.example/\uFFFD"));
}

TEST_F(Entry, SaysHowMuchOfAnEndlessTextFollows)
{
    message_.text = RecordText(std::string(20'000, 'x'));
    EXPECT_EQ(entry().text.size(), 20'000U);
    EXPECT_EQ(entry().rest, "");
    std::string foxes;
    for (int count = 0; count < 21'204; ++count) foxes += "🦊";
    message_.text = RecordText(foxes);
    EXPECT_EQ(entry().text.size(), 80'000U);
    EXPECT_EQ(entry().rest, "1,204 more characters are in the archive.");
    EXPECT_TRUE(spokenText(entry()).ends_with(entry().rest));
}

} // namespace
} // namespace vorn
