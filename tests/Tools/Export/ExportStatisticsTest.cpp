#include "Tools/Export/ExportStatistics.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace vorn {
namespace {

ExportStatistics sample(const MessageList& messages, const SkipTally& skipped)
{
    return {NimbrelExportStats({NimbrelChat{}}, messages), skipped, {"/tmp/out.zip", 12345}, "abc123"};
}

MessageList manyMessages()
{
    MessageList messages(1234);
    for (std::size_t i = 0; i < messages.size(); ++i) {
        messages[i].sentAt = 1'678'307'200 + static_cast<std::int64_t>(i);
        messages[i].fromMe = i % 4 == 0;
    }
    return messages;
}

TEST(ExportStatistics, AreLinesForAPerson)
{
    EXPECT_EQ(textOf(sample(manyMessages(), {{{"empty", 2}, {"reaction", 1000}}})),
              "Chats           1\n"
              "Messages        1,234\n"
              "  yours         309\n"
              "  replies       925\n"
              "First message   2023-03-08T20:26:40Z\n"
              "Last message    2023-03-08T20:47:13Z\n"
              "Left out        1,002\n"
              "  empty         2\n"
              "  reaction      1,000\n"
              "Archive         /tmp/out.zip\n"
              "  size          12,345 bytes\n"
              "  SHA-256       abc123\n");
}

TEST(ExportStatistics, OfNothingSayNone)
{
    EXPECT_EQ(textOf(sample({}, {})), "Chats           1\n"
                                      "Messages        0\n"
                                      "  yours         0\n"
                                      "  replies       0\n"
                                      "First message   none\n"
                                      "Last message    none\n"
                                      "Left out        0\n"
                                      "Archive         /tmp/out.zip\n"
                                      "  size          12,345 bytes\n"
                                      "  SHA-256       abc123\n");
}

TEST(ExportStatistics, AreJSONForPrograms)
{
    const auto parsed = nlohmann::json::parse(jsonOf(sample(manyMessages(), {{{"empty", 2}}})));
    EXPECT_EQ(parsed,
              (nlohmann::json{{"chats", 1},
                              {"messages", 1234},
                              {"prompts", 309},
                              {"replies", 925},
                              {"firstAt", "2023-03-08T20:26:40Z"},
                              {"lastAt", "2023-03-08T20:47:13Z"},
                              {"skipped", {{"empty", 2}}},
                              {"archive", {{"path", "/tmp/out.zip"}, {"sizeBytes", 12345}, {"sha256", "abc123"}}}}));
    const auto empty = nlohmann::json::parse(jsonOf(sample({}, {})));
    EXPECT_EQ(empty.at("firstAt"), nullptr);
    EXPECT_EQ(empty.at("lastAt"), nullptr);
    EXPECT_EQ(empty.at("skipped"), nlohmann::json::object());
}

} // namespace
} // namespace vorn
