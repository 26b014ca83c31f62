#include "NimbrelExportKit/Messages/NimbrelChatLocator.h"
#include "tests/support/MessagesFixture.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using NimbrelChatLocator::locate;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::MessagesFixture;
using testing::MessagesSchema;

class NimbrelChatLocatorTest : public ::testing::Test {
protected:
    testing::TemporaryFolder folder;
    MessagesFixture fixture{folder / "chat.db"};
    const std::vector<std::string> handles = {"+1 (555) 010-2030"};
};

TEST_F(NimbrelChatLocatorTest, FindsTheChatWhoseOnlyOtherParticipantIsTheAssistant)
{
    fixture.assistantChat();
    fixture.handle(2, "friend@example.com");
    fixture.chat(2, "iMessage;-;friend@example.com", {2});
    EXPECT_THAT(locate(fixture.database(), handles),
                ElementsAre(NimbrelChat{1, "iMessage;-;+15550102030", "+15550102030", "iMessage"}));
}

TEST_F(NimbrelChatLocatorTest, FindsEveryChatOfEveryHandleByRow)
{
    fixture.handle(1, "+1 555 010 2030", "SMS");
    fixture.handle(2, "+15550102030", "iMessage");
    fixture.handle(3, "Assistant@Example.com");
    fixture.chat(9, "SMS;-;+15550102030", {1}, 45, std::string("SMS"));
    fixture.chat(4, "any;-;+15550102030", {2}, 45, nullptr);
    fixture.chat(7, "iMessage;-;assistant@example.com", {3});
    EXPECT_THAT(locate(fixture.database(), {"+15550102030", "assistant@example.com"}),
                ElementsAre(NimbrelChat{4, "any;-;+15550102030", "+15550102030", std::nullopt},
                            NimbrelChat{7, "iMessage;-;assistant@example.com", "Assistant@Example.com", "iMessage"},
                            NimbrelChat{9, "SMS;-;+15550102030", "+1 555 010 2030", "SMS"}));
}

TEST_F(NimbrelChatLocatorTest, NeverFindsAGroupWhateverItsStyle)
{
    fixture.handle(1, MessagesFixture::assistant);
    fixture.handle(2, "friend@example.com");
    fixture.handle(3, "other@example.com");
    fixture.chat(1, "iMessage;+;chat1", {1, 2, 3}, 43);
    fixture.chat(2, "iMessage;+;chat2", {1, 2, 3}, 45);
    EXPECT_THAT(locate(fixture.database(), handles), IsEmpty());
}

TEST_F(NimbrelChatLocatorTest, NeverFindsAChatOfAnotherStyle)
{
    fixture.handle(1, MessagesFixture::assistant);
    fixture.chat(1, "iMessage;-;+15550102030", {1}, 43);
    EXPECT_THAT(locate(fixture.database(), handles), IsEmpty());
}

TEST_F(NimbrelChatLocatorTest, RunsNoQueryForBlankHandles)
{
    const SQLiteDatabase withoutTables((folder / "empty.db").string(), SQLiteDatabase::Mode::create);
    EXPECT_THAT(locate(withoutTables, {"", "  "}), IsEmpty());
    EXPECT_THAT(locate(withoutTables, {}), IsEmpty());
    EXPECT_THROW(locate(withoutTables, handles), SQLiteError);
}

TEST_F(NimbrelChatLocatorTest, SkipsRowsWithoutGuidOrHandle)
{
    fixture.handle(1, nullptr);
    fixture.handle(2, MessagesFixture::assistant);
    fixture.chat(1, "iMessage;-;nobody", {1});
    fixture.chat(2, nullptr, {2});
    EXPECT_THAT(locate(fixture.database(), handles), IsEmpty());
}

TEST(NimbrelChatLocator, WorksWithoutTheServiceColumn)
{
    const testing::TemporaryFolder folder;
    MessagesFixture fixture(folder / "chat.db", MessagesSchema{.without = {"chat.service_name"}});
    fixture.assistantChat();
    EXPECT_THAT(locate(fixture.database(), {MessagesFixture::assistant}),
                ElementsAre(NimbrelChat{1, "iMessage;-;+15550102030", "+15550102030", std::nullopt}));
}

} // namespace
} // namespace vorn
