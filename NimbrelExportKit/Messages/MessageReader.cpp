#include "NimbrelExportKit/Messages/MessageReader.h"

#include "NimbrelExportKit/Links/LinkDetector.h"
#include "NimbrelExportKit/Messages/AppleTime.h"
#include "NimbrelExportKit/Messages/AttachmentIndex.h"
#include "NimbrelExportKit/Messages/MessageBody.h"
#include "NimbrelExportKit/Messages/MessageStatements.h"
#include "NimbrelExportKit/Messages/RepeatedTexts.h"
#include "Platform/Base/Text.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>

namespace vorn::MessageReader {
namespace {

constexpr std::int64_t rowsBetweenReports = 4096;

bool isSet(const SQLiteRow& row, MessageColumn column)
{
    return row.int64OrZero(column) != 0;
}

/// Finds the web links of texts, each link once per text.
class WebLinks {
public:
    explicit WebLinks(const CancelFlag& cancel) : detector_(LinkDetector::make(cancel)) {}

    /// Calls `onLink` with each URL. Most texts have none, and most of the others one.
    template <class OnLink>
    void in(std::string_view text, OnLink&& onLink)
    {
        if (!detector_ || text.empty()) return;
        found_.clear();
        detector_->find(text, found_);
        seen_.clear();
        for (const std::string& url : found_) {
            if (!url.starts_with("http")) continue;
            if (found_.size() == 1 || seen_.insert(url).second) onLink(url);
        }
    }

private:
    std::unique_ptr<LinkDetector> detector_; // without one no links are exported
    std::vector<std::string> found_;
    std::set<std::string_view> seen_;
};

/// Gives undated rows the latest time kept so far.
class Timeline {
public:
    /// The row's time in whole seconds; nothing for an undated row before any row was kept.
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

/// One pass over the message rows: keeps or tallies each, but ignores one without a ROWID or guid.
class Reading {
public:
    Reading(const std::vector<NimbrelChat>& chats, const std::string& marks, const std::vector<SQLiteValue>& bindings,
            const SQLiteDatabase& database, const CancelFlag& cancel)
        : attachments_(marks, bindings, database, arena_), webLinks_(cancel)
    {
        for (const NimbrelChat& chat : chats) chatGuids_.emplace(chat.rowID, arena_.keep(chat.guid));
    }

    void take(const SQLiteRow& row)
    {
        const auto rowID = row.int64(messageRowID);
        const auto guid = row.rawText(messageGuid);
        if (!rowID || !guid) return;
        if (isSet(row, messageAssociatedType)) return skip("reaction");
        if (isSet(row, messageItemType)) return skip("system");
        const auto body = messageBody(row.rawText(messageText), row.blobView(messageAttributedBody), bodyRoom_);
        const bool edited = isSet(row, messageDateEdited);
        if (row.int64OrZero(messageDateRetracted) > 0 || (edited && body.empty())) return skip("unsent");
        if (body.empty() && !attachments_.has(*rowID)) return skip("empty");
        const auto sentAt = timeline_.timeFor(row.int64OrZero(messageDate));
        if (!sentAt) return skip("undated");
        timeline_.keep(*sentAt);

        ExportedMessage& message = output_.messages.add();
        message.rowID = *rowID;
        message.sentAt = *sentAt;
        message.guid = keep(*guid);
        message.text = arena_.keep(body);
        message.edited = edited;
        fillIn(message, row);
        webLinks_.in(body, [this](std::string_view url) { links_.push_back({lastMessage(), arena_.keep(url)}); });
    }

    /// Call it after the statement has ended. Fills the messages' lists only then: allocations are slow while SQLite
    /// frees the rows that it sorted.
    Output finish()
    {
        for (Link& link : links_) output_.messages[link.message].links.push_back({std::move(link.url), std::nullopt});
        for (ExportedMessage& message : output_.messages) message.attachments = attachments_.of(message.rowID);
        sort();
        return std::move(output_);
    }

private:
    struct Link {
        std::size_t message; ///< the index of its message in the output
        RecordText url;
    };

    /// Fills in the fields that were not needed to decide whether to keep the row.
    void fillIn(ExportedMessage& message, const SQLiteRow& row)
    {
        message.chat = chatGuid(row.int64(messageChat).value_or(-1));
        message.fromMe = isSet(row, messageIsFromMe);
        const auto service = row.rawText(messageService);
        if (service) message.service = repeated_.of(text::repaired(*service, room_));
        const auto thread = row.rawText(messageThreadOriginator);
        if (thread) message.replyToGuid = keep(*thread);
    }

    std::size_t lastMessage() const { return output_.messages.size() - 1; }

    void sort()
    {
        const auto earlier = [](const ExportedMessage& a, const ExportedMessage& b) {
            return std::tie(a.sentAt, a.rowID) < std::tie(b.sentAt, b.rowID);
        };
        // Rows come in the order of their stamps, which nearly always is this order.
        if (!std::is_sorted(output_.messages.begin(), output_.messages.end(), earlier)) {
            std::stable_sort(output_.messages.begin(), output_.messages.end(), earlier);
        }
    }

    void skip(std::string_view reason) { output_.skipped.add(reason, 1); }

    RecordText keep(std::string_view text) { return arena_.keep(text::repaired(text, room_)); }

    RecordText chatGuid(std::int64_t chat) const
    {
        const auto found = chatGuids_.find(chat);
        return found == chatGuids_.end() ? RecordText() : TextArena::share(found->second);
    }

    Output output_;
    TextArena& arena_ = output_.messages.arena();
    RepeatedTexts repeated_{arena_};
    std::string room_, bodyRoom_;
    AttachmentIndex attachments_;
    std::unordered_map<std::int64_t, RecordText> chatGuids_;
    WebLinks webLinks_;
    std::vector<Link> links_;
    Timeline timeline_;
};

} // namespace

Output read(const std::vector<NimbrelChat>& chats, const SQLiteDatabase& database, const OnRows& onRows,
            const CancelFlag& cancel)
{
    if (chats.empty()) return {};
    const std::string marks = placeholders(chats.size());
    const std::string statement = messageStatement(database.columns("message"), marks);
    std::vector<SQLiteValue> bindings;
    bindings.reserve(chats.size());
    for (const NimbrelChat& chat : chats) bindings.emplace_back(chat.rowID);

    Reading reading(chats, marks, bindings, database, cancel);
    std::int64_t rows = 0;
    database.query(statement, bindings, [&](const SQLiteRow& row) {
        reading.take(row);
        if (++rows % rowsBetweenReports == 0 && onRows) onRows(rows);
    });
    return reading.finish();
}

} // namespace vorn::MessageReader
