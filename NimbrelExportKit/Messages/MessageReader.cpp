#include "NimbrelExportKit/Messages/MessageReader.h"

#include "NimbrelExportKit/Links/LinkDetector.h"
#include "NimbrelExportKit/Messages/AppleTime.h"
#include "NimbrelExportKit/Messages/AttachmentIndex.h"
#include "NimbrelExportKit/Messages/MessageBody.h"
#include "NimbrelExportKit/Messages/MessageStatements.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <string_view>
#include <tuple>
#include <unordered_map>

namespace vorn::MessageReader {
namespace {

constexpr std::int64_t rowsBetweenReports = 4096;

bool isSet(const SQLiteRow& row, MessageColumn column)
{
    return row.int64(column).value_or(0) != 0;
}

/// The web links of one text after another, each link once in each text.
class WebLinks {
public:
    std::vector<ExportedLink> in(std::string_view text)
    {
        std::vector<ExportedLink> links;
        if (!detector_ || text.empty()) return links;
        found_.clear();
        detector_->find(text, found_);
        for (std::string& url : found_) {
            if (url.starts_with("http") && seen_.insert(url).second) links.push_back({std::move(url), std::nullopt});
        }
        seen_.clear();
        return links;
    }

private:
    std::unique_ptr<LinkDetector> detector_ = LinkDetector::make(); // without one no links are exported
    std::vector<std::string> found_;
    std::set<std::string> seen_;
};

/// Dates rows that the database left undated: at the latest time kept so far.
class Timeline {
public:
    /// The row's time in whole seconds; nothing for an undated row before every kept one.
    std::optional<std::int64_t> timeFor(std::int64_t messagesDate) const
    {
        // Stamps span ±9.2·10^9 seconds as nanoseconds and ±10^12 as seconds: the cast cannot overflow.
        if (const auto exact = AppleTime::unixSeconds(messagesDate))
            return static_cast<std::int64_t>(std::floor(*exact));
        return latest_;
    }
    void keep(std::int64_t sentAt) { latest_ = std::max(latest_.value_or(sentAt), sentAt); }

private:
    std::optional<std::int64_t> latest_; ///< nothing until a row was kept
};

/// One pass over the message rows: keeps or tallies each.
class Reading {
public:
    Reading(const std::vector<NimbrelChat>& chats, AttachmentIndex attachments) : attachments_(std::move(attachments))
    {
        for (const NimbrelChat& chat : chats) chatGuids_.emplace(chat.rowID, SharedText(chat.guid));
    }

    void take(const SQLiteRow& row)
    {
        const auto rowID = row.int64(messageRowID);
        auto guid = row.text(messageGuid);
        if (!rowID || !guid) return;
        if (isSet(row, messageAssociatedType)) return skip("reaction");
        if (isSet(row, messageItemType)) return skip("system");
        std::string body = messageBody(row.rawText(messageText), row.blobView(messageAttributedBody));
        const bool edited = isSet(row, messageDateEdited);
        std::vector<ExportedAttachment> attachments = attachments_.of(*rowID);
        if (row.int64(messageDateRetracted).value_or(0) > 0 || (edited && body.empty())) return skip("unsent");
        if (body.empty() && attachments.empty()) return skip("empty");
        const auto sentAt = timeline_.timeFor(row.int64(messageDate).value_or(0));
        if (!sentAt) return skip("undated");
        timeline_.keep(*sentAt);

        ExportedMessage& message = output_.messages.emplace_back();
        message.rowID = *rowID;
        message.sentAt = *sentAt;
        message.guid = std::move(*guid);
        message.chat = chatGuid(row.int64(messageChat).value_or(-1));
        message.service = service(row.text(messageService));
        message.replyToGuid = row.text(messageThreadOriginator);
        message.links = links_.in(body);
        message.text = std::move(body);
        message.attachments = std::move(attachments);
        message.fromMe = isSet(row, messageIsFromMe);
        message.edited = edited;
    }

    Output finish()
    {
        const auto earlier = [](const ExportedMessage& a, const ExportedMessage& b) {
            return std::tie(a.sentAt, a.rowID) < std::tie(b.sentAt, b.rowID);
        };
        // Rows come in the order of their stamps, which is nearly always this one already.
        if (!std::is_sorted(output_.messages.begin(), output_.messages.end(), earlier)) {
            std::stable_sort(output_.messages.begin(), output_.messages.end(), earlier);
        }
        return std::move(output_);
    }

private:
    void skip(std::string_view reason) { output_.skipped.add(reason, 1); }

    SharedText chatGuid(std::int64_t chat) const
    {
        static const SharedText unknown{std::string()};
        const auto found = chatGuids_.find(chat);
        return found == chatGuids_.end() ? unknown : found->second;
    }

    SharedText service(const std::optional<std::string>& name)
    {
        if (!name) return {};
        const auto known = services_.find(*name);
        if (known != services_.end()) return known->second;
        return services_.emplace(*name, SharedText(*name)).first->second;
    }

    AttachmentIndex attachments_;
    std::unordered_map<std::int64_t, SharedText> chatGuids_;
    std::map<std::string, SharedText> services_;
    WebLinks links_;
    Timeline timeline_;
    Output output_;
};

} // namespace

Output read(const std::vector<NimbrelChat>& chats, const SQLiteDatabase& database, const OnRows& onRows)
{
    if (chats.empty()) return {};
    const std::string marks = placeholders(chats.size());
    const std::string statement = messageStatement(database.columns("message"), marks);
    std::vector<SQLiteValue> bindings;
    for (const NimbrelChat& chat : chats) bindings.emplace_back(chat.rowID);

    Reading reading(chats, AttachmentIndex(marks, bindings, database));
    std::int64_t rows = 0;
    database.query(statement, bindings, [&](const SQLiteRow& row) {
        reading.take(row);
        if (++rows % rowsBetweenReports == 0 && onRows) onRows(rows);
    });
    return reading.finish();
}

} // namespace vorn::MessageReader
