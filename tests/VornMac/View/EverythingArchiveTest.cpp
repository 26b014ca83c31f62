#include "NimbrelExportKit/Archive/NimbrelArchiveBuilder.h"
#include "NimbrelExportKit/Messages/NimbrelExporter.h"
#include "Platform/Base/Bytes.h"
#include "VornMac/Text/EverythingText.h"
#include "VornMac/Text/StatisticsText.h"
#include "VornMac/View/EverythingList.h"
#include "VornSandbox/SampleHistory/SampleHistory.h"
#include "tests/VornMac/View/ScreenFixture.h"
#include "tests/support/PrivateTemporaryFolder.h"
#include "tests/support/ScopedEnvironment.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

// The list shows what the archive's documents hold, message by message.
namespace vorn {
namespace {

using nlohmann::json;
using testing::MessageRow;
using testing::MessagesFixture;
using testing::TemporaryFolder;
using Lines = std::vector<std::string>;

json documentOf(const ByteBuffer& bytes)
{
    return json::parse(textOf(bytes));
}

/// The rows of a list, as values by role.
class Listed {
public:
    explicit Listed(AppModel::ExportResult found) { list_.show(std::move(found), nullptr, nullptr); }

    std::size_t count() const { return list_.count(); }
    std::string at(std::size_t row, EverythingList::Role role) const
    {
        return list_.data(list_.index(static_cast<int>(row)), role).toString().toStdString();
    }
    Lines linesAt(std::size_t row, EverythingList::Role role) const
    {
        const QString text = list_.data(list_.index(static_cast<int>(row)), role).toString();
        Lines lines;
        for (const QString& line : text.split('\n', Qt::SkipEmptyParts)) lines.push_back(line.toStdString());
        return lines;
    }

private:
    EverythingList list_;
};

/// The list's values for a message of the document, without the text.
struct Expected {
    explicit Expected(const json& message)
    {
        const Instant sent{std::chrono::seconds(message.at("sentAt").get<std::int64_t>())};
        day = dayText(sent);
        detail = internetDateTime(sent).substr(11, 8); // in British notation
        if (!message.at("service").is_null()) detail += " · " + message.at("service").get<std::string>();
        if (message.at("edited").get<bool>()) detail += " · Edited";
        if (!message.at("replyToGuid").is_null()) detail += " · Reply";
        for (const json& link : message.at("links")) links.push_back(link.at("url"));
        for (const json& attachment : message.at("attachments")) attachments.push_back(attachment.at("mimeType"));
    }

    std::string day, detail;
    Lines links, attachments;
};

/// Compares all but the texts.
void expectListed(const Listed& listed, std::size_t row, const json& message)
{
    using List = EverythingList;
    const Expected expected(message);
    EXPECT_EQ(listed.at(row, List::authorRole), message.at("fromMe").get<bool>() ? "You" : "Nimbrel");
    EXPECT_EQ(listed.at(row, List::fromMeRole), message.at("fromMe").get<bool>() ? "true" : "false");
    EXPECT_EQ(listed.at(row, List::dayRole), expected.day);
    EXPECT_EQ(listed.at(row, List::detailRole), expected.detail);
    EXPECT_EQ(listed.at(row, List::restRole), "");
    EXPECT_EQ(listed.linesAt(row, List::linksRole), expected.links);
    const Lines attachments = listed.linesAt(row, List::attachmentsRole);
    ASSERT_EQ(attachments.size(), expected.attachments.size());
    for (std::size_t at = 0; at < attachments.size(); ++at)
        EXPECT_TRUE(attachments[at].ends_with(" (" + expected.attachments[at] + ")")) << attachments[at];
}

void expectLeftOut(const NimbrelExportResult& found)
{
    const json manifest = documentOf(NimbrelArchiveBuilder::manifestJSON(found, {}, Instant{}));
    const std::map<std::string, std::string> labels = {{"reaction", "Reactions"},
                                                       {"unsent", "Unsent messages"},
                                                       {"system", "Notices"},
                                                       {"empty", "Empty messages"},
                                                       {"undated", "Undated messages"}};
    const auto rows = leftOutRows(found.skipped);
    EXPECT_EQ(rows.size(), manifest.at("skipped").size());
    for (const auto& [reason, count] : manifest.at("skipped").items()) {
        const LeftOutRow expected{labels.at(reason), countText(count.get<std::int64_t>()), ""};
        const auto row = std::ranges::find(rows, expected.label, &LeftOutRow::label);
        ASSERT_NE(row, rows.end()) << reason;
        EXPECT_EQ(row->count, expected.count);
        EXPECT_NE(row->reason, "");
    }
}

class EverythingIsTheArchive : public ::testing::Test {
protected:
    AppModel::ExportResult exported(const std::vector<std::string>& handles) const
    {
        return std::make_shared<NimbrelExportResult>(NimbrelExporter(database(), 1).export_(handles));
    }
    std::filesystem::path database() const { return folder_ / "chat.db"; }

    TemporaryFolder folder_;
    testing::PrivateTemporaryFolder temporary_;
    testing::ScopedEnvironment language_{"LC_ALL", "en_GB.UTF-8"};
    testing::ScopedEnvironment zone_{"TZ", "UTC"};
};

TEST_F(EverythingIsTheArchive, OfTheSampleHistory)
{
    const auto history = writeSampleHistory(database(), {.messages = 5'000});
    const auto found = exported(history.handles);
    const json messages = documentOf(NimbrelArchiveBuilder::messagesJSON(*found));
    const Listed listed(found);
    ASSERT_EQ(listed.count(), messages.size());
    ASSERT_EQ(static_cast<std::int64_t>(listed.count()), history.expected.kept);
    for (std::size_t row = 0; row < messages.size(); ++row) {
        SCOPED_TRACE(messages[row].dump());
        expectListed(listed, row, messages[row]);
        EXPECT_EQ(listed.at(row, EverythingList::textRole), messages[row].at("text").get<std::string>());
    }
    expectLeftOut(*found);
}

/// A row that is kept or left out, and its text in the list: the document's unless that cannot be drawn.
struct OddRow {
    MessageRow row;
    std::optional<std::string> listed{};
};

std::vector<OddRow> oddRows()
{
    const auto text = [](const std::string& text) { return MessageRow{.text = text}; };
    using namespace std::string_literals;
    return {
        {text("First")},
        {text("Two\nlines\n\nand a gap")},
        {text("See https://one.example/a?b=c and two.example, https://one.example/a?b=c")},
        {text("שלום עולם \u200F(abc)\u200F"), {}},
        {text("مرحبا \u202Egpj.exe\u202C"), {}},
        {text("👩‍👩‍👧 🇩🇪 e\u0301"), {}},
        {text("<b>bold</b> &amp; \"quoted\" \\ / end"), {}},
        {text("tab\tand\x1B[2J\x07 bell\r\nnext"), "tab and\uFFFD[2J\uFFFD bell\nnext"},
        {text("ill \xFF formed"), "ill \uFFFD formed"},
        {text(std::string(20'000, 'x')), {}},
        {text("zero\u200Bwidth"), {}},
        {text("\uFEFFmark"), "mark"}, // Qt takes it for a byte order mark; it is invisible anyway
        {{.text = nullptr, .attributedBody = testing::attributedBody("From its body")}, {}},
        {{.text = std::string("Mine"), .isFromMe = std::int64_t{1}, .service = std::string("SMS")}, {}},
        {{.text = std::string("No service"), .service = nullptr}, {}},
        {{.text = std::string("Edited"), .dateEdited = std::int64_t{1}}, {}},
        {{.text = std::string("Answer"), .threadOriginatorGuid = std::string("guid-1")}, {}},
        {{.text = std::string("Undated"), .date = std::int64_t{0}}, {}},
        {{.text = std::string("Before 1970"), .date = std::int64_t{-40'000'000'000'000'000'00}}, {}},
        {{.text = std::string("In 2255"), .date = std::int64_t{80'000'000'000'000'000'00}}, {}},
        {{.text = std::string("Loved"), .associatedMessageType = std::int64_t{2000}}, {}},
        {{.text = std::string("Named"), .itemType = std::int64_t{2}}, {}},
        {{.text = std::string("Taken back"), .dateRetracted = std::int64_t{1}}, {}},
        {{.text = std::string(" \uFFFC ")}, {}},
    };
}

TEST_F(EverythingIsTheArchive, OfEveryOddRow)
{
    MessagesFixture history(database());
    history.assistantChat();
    std::map<std::string, std::string> drawn; // by guid
    for (const OddRow& odd : oddRows()) {
        const std::int64_t rowID = history.message(odd.row);
        if (odd.listed) drawn["guid-" + std::to_string(rowID)] = *odd.listed;
    }
    const std::int64_t photo = history.message({.text = std::string("\uFFFC")});
    history.attachment(photo, std::string("image/heic"), nullptr);
    history.attachment(photo, nullptr, std::string("public.mpeg-4"));
    history.attachment(photo, nullptr, nullptr);

    const auto found = exported({MessagesFixture::assistant});
    const json messages = documentOf(NimbrelArchiveBuilder::messagesJSON(*found));
    const Listed listed(found);
    ASSERT_EQ(listed.count(), messages.size());
    EXPECT_EQ(messages.size(), oddRows().size() - 4 + 1) << "four are left out, and the photo is kept";
    for (std::size_t row = 0; row < messages.size(); ++row) {
        SCOPED_TRACE(messages[row].dump());
        expectListed(listed, row, messages[row]);
        const auto other = drawn.find(messages[row].at("guid"));
        EXPECT_EQ(listed.at(row, EverythingList::textRole),
                  other != drawn.end() ? other->second : messages[row].at("text").get<std::string>());
    }
    expectLeftOut(*found);
}

} // namespace
} // namespace vorn
