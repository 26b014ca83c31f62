// Reads messages when no link detector can be made.
#include "NimbrelExportKit/Links/LinkDetector.h"
#include "NimbrelExportKit/Messages/NimbrelExporter.h"
#include "tests/support/MessagesFixture.h"
#include "tests/support/PrivateTemporaryFolder.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace vorn {

/// Replaces the platform's in this program.
std::unique_ptr<LinkDetector> LinkDetector::make(const CancelFlag& /*cancel*/)
{
    return nullptr;
}

namespace {

TEST(WithoutLinkDetector, ExportsMessagesWithoutLinks)
{
    const testing::TemporaryFolder folder;
    const testing::PrivateTemporaryFolder temporary;
    testing::MessagesFixture fixture(folder / "chat.db");
    fixture.assistantChat();
    fixture.message({.text = std::string("see https://example.com/")});
    const auto result = NimbrelExporter(fixture.path(), 1).export_({testing::MessagesFixture::assistant});
    ASSERT_THAT(result.messages, ::testing::SizeIs(1));
    EXPECT_EQ(result.messages[0].text, "see https://example.com/");
    EXPECT_THAT(result.messages[0].links, ::testing::IsEmpty());
}

} // namespace
} // namespace vorn
