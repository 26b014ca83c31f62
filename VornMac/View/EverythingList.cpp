#include "VornMac/View/EverythingList.h"

#include "VornMac/View/ShownText.h"

#include <algorithm>
#include <chrono>

namespace vorn {
namespace {

Instant timeOf(const ExportedMessage& message)
{
    return Instant(std::chrono::seconds(message.sentAt));
}

} // namespace

EverythingList::EverythingList() = default;
EverythingList::~EverythingList() = default;

void EverythingList::show(AppModel::ExportResult exportResult, MainContext* context, BackgroundExecutor* background)
{
    searching_ = {};
    beginResetModel();
    exportResult_ = std::move(exportResult);
    context_ = context;
    background_ = background;
    dates_ = exportResult_ ? std::make_unique<LocalDates>() : nullptr;
    hits_.reset();
    isComplete_ = true;
    lastEntry_.reset();
    endResetModel();
    emit listedChanged();
}

void EverythingList::search(std::string_view words)
{
    MessageSearch search(words);
    searching_ = {};
    isComplete_ = search.isEmpty();
    if (isComplete_)
        replaceHits(std::nullopt);
    else if (exportResult_)
        searching_ = Task(*context_, runSearch(std::move(search)));
    emit listedChanged();
}

Async<> EverythingList::runSearch(MessageSearch search)
{
    const AppModel::ExportResult found = exportResult_;
    const MessageList& messages = found->messages;
    std::size_t next = 0;
    const auto searchSome = [&](const CancelFlag& cancel) {
        Hits hits;
        for (const std::size_t end = std::min(next + searchedAtOnce, messages.size()); next < end; ++next) {
            cancel.check();
            if (search.finds(messages[next])) hits.push_back(static_cast<std::uint32_t>(next));
        }
        return hits;
    };
    replaceHits(co_await onBackground(background_, searchSome));
    while (next < messages.size()) {
        emit listedChanged();
        appendHits(co_await onBackground(background_, searchSome));
    }
    isComplete_ = true;
    emit listedChanged();
}

void EverythingList::replaceHits(std::optional<Hits> hits)
{
    if (hits == hits_) return;
    beginResetModel();
    hits_ = std::move(hits);
    endResetModel();
}

void EverythingList::appendHits(const Hits& hits)
{
    if (hits.empty()) return;
    const int first = rowCount();
    beginInsertRows({}, first, first + static_cast<int>(hits.size()) - 1);
    if (hits_) {
        hits_->reserve(total()); // unused space takes no memory; growing would leave old blocks behind
        hits_->insert(hits_->end(), hits.begin(), hits.end());
    }
    endInsertRows();
}

std::size_t EverythingList::count() const
{
    return hits_ ? hits_->size() : total();
}

std::size_t EverythingList::total() const
{
    return exportResult_ ? exportResult_->messages.size() : 0;
}

int EverythingList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(count()); // a list: its rows have no children
}

std::size_t EverythingList::placeOf(int row) const
{
    const auto at = static_cast<std::size_t>(row);
    return hits_ ? hits_->at(at) : at;
}

const MessageEntry& EverythingList::entryAt(std::size_t place) const
{
    if (!lastEntry_ || lastEntry_->first != place)
        lastEntry_.emplace(place, entryOf(exportResult_->messages[place], *dates_));
    return lastEntry_->second; // NOLINT(bugprone-unchecked-optional-access): it was set above
}

QVariant EverythingList::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount()) return {};
    const std::size_t place = placeOf(index.row());
    switch (role) {
    case dayRole: return shown(dates_->day(timeOf(exportResult_->messages[place]))); // also requested for neighbours
    case authorRole: return shown(entryAt(place).author);
    case detailRole: return shown(detailText(entryAt(place)));
    case textRole: return shown(entryAt(place).text);
    case restRole: return shown(entryAt(place).rest);
    case linksRole: return shown(linesOf(entryAt(place).links));
    case attachmentsRole: return shown(linesOf(entryAt(place).attachments));
    case spokenRole: return shown(spokenText(entryAt(place)));
    case fromMeRole: return entryAt(place).fromMe;
    default: return {};
    }
}

QHash<int, QByteArray> EverythingList::roleNames() const
{
    return {{dayRole, "day"},      {authorRole, "author"}, {detailRole, "detail"},           {textRole, "text"},
            {restRole, "rest"},    {linksRole, "links"},   {attachmentsRole, "attachments"}, {spokenRole, "spoken"},
            {fromMeRole, "fromMe"}};
}

} // namespace vorn
