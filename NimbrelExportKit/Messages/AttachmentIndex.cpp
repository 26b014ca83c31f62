#include "NimbrelExportKit/Messages/AttachmentIndex.h"

#include "NimbrelExportKit/Messages/MessageStatements.h"
#include "NimbrelExportKit/Messages/PreferredMIMEType.h"
#include "NimbrelExportKit/Messages/RepeatedTexts.h"

#include <algorithm>
#include <string_view>

namespace vorn {
namespace {

constexpr std::string_view unknownMIMEType = "application/octet-stream";

std::string mimeTypeOf(const SQLiteRow& row)
{
    if (auto given = row.text(attachmentMIMEType); given && !given->empty()) return std::move(*given);
    const auto identifier = row.text(attachmentTypeIdentifier);
    auto preferred = identifier ? preferredMIMEType(*identifier) : std::nullopt;
    return preferred ? std::move(*preferred) : std::string(unknownMIMEType);
}

} // namespace

AttachmentIndex::AttachmentIndex(const std::string& marks, const std::vector<SQLiteValue>& bindings,
                                 const SQLiteDatabase& database, TextArena& arena)
{
    RepeatedTexts types(arena);
    const auto columns = database.columns("attachment");
    if (columns.empty()) return;
    database.query(attachmentStatement(columns, marks), bindings, [&](const SQLiteRow& row) {
        if (const auto message = row.int64(attachmentMessage))
            entries_.push_back({*message, types.of(mimeTypeOf(row))});
    });
    // Already sorted by the statement, unless a damaged database stores numbers as text.
    const auto earlier = [](const Entry& a, const Entry& b) { return a.message < b.message; };
    if (!std::is_sorted(entries_.begin(), entries_.end(), earlier))
        std::stable_sort(entries_.begin(), entries_.end(), earlier);
}

bool AttachmentIndex::has(std::int64_t message)
{
    moveTo(message);
    return place_ < entries_.size() && entries_[place_].message == message;
}

std::vector<ExportedAttachment> AttachmentIndex::of(std::int64_t message)
{
    std::vector<ExportedAttachment> attachments;
    if (!has(message)) return attachments;
    for (std::size_t at = place_; at < entries_.size() && entries_[at].message == message; ++at) {
        attachments.push_back({TextArena::share(entries_[at].mimeType)});
    }
    return attachments;
}

void AttachmentIndex::moveTo(std::int64_t message)
{
    const auto isBefore = [&](std::size_t at) { return at < entries_.size() && entries_[at].message < message; };
    for (int step = 0; step < 4 && isBefore(place_); ++step) ++place_;
    const bool isFirst = place_ == 0 || entries_[place_ - 1].message < message;
    if (isFirst && !isBefore(place_)) return;
    const auto found = std::lower_bound(entries_.begin(), entries_.end(), message,
                                        [](const Entry& entry, std::int64_t wanted) { return entry.message < wanted; });
    place_ = static_cast<std::size_t>(found - entries_.begin());
}

} // namespace vorn
