#pragma once

#include "Platform/Async/BackgroundExecutor.h"
#include "Platform/Async/MainContext.h"
#include "VornMac/Model/AppModel.h"
#include "VornMac/Text/MessageEntry.h"
#include "VornMac/Text/MessageSearch.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <QAbstractListModel>
#include <qqmlregistration.h>

namespace vorn {

/// Every message that was found, or those that match a search. Shares the export result and makes a row only when it is
/// requested: a million messages take no extra memory, and a search takes four bytes per match. The roles are the parts
/// of a `MessageEntry`, and `spoken` for a screen reader. Threads: the model's.
class EverythingList : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Everything makes it.")

public:
    enum Role {
        dayRole = Qt::UserRole,
        authorRole,
        detailRole,
        textRole,
        restRole,
        linksRole,
        attachmentsRole,
        spokenRole,
        fromMeRole
    };
    /// How many messages are searched before the matches among them are shown: a few milliseconds' work.
    static constexpr std::size_t searchedAtOnce = 16'384;

    EverythingList();
    ~EverythingList() override;

    /// Shows `exportResult`, which may be null, without a search. Searches run on `background` and return to `context`.
    /// Both outlive this object, and `context` is shut down first.
    void show(AppModel::ExportResult exportResult, MainContext* context, BackgroundExecutor* background);
    /// Shows only the messages that contain `words`; all of them if `words` is blank. The old rows stay until the first
    /// batch has been searched; the matches of later batches are appended.
    void search(std::string_view words);

    std::size_t count() const;                                   ///< of rows
    std::size_t total() const;                                   ///< of messages
    bool isSearch() const noexcept { return hits_.has_value(); } ///< whether the rows are matches of a search
    bool isComplete() const noexcept { return isComplete_; }     ///< false while a search runs

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

signals:
    void listedChanged(); ///< the number of rows may have changed, or a search has begun or ended

private:
    using Hits = std::vector<std::uint32_t>; ///< indexes into the export result

    Async<> runSearch(MessageSearch search);
    void replaceHits(std::optional<Hits> hits);
    void appendHits(const Hits& hits);
    std::size_t placeOf(int row) const;
    const MessageEntry& entryAt(std::size_t place) const;

    AppModel::ExportResult exportResult_;
    MainContext* context_ = nullptr;
    BackgroundExecutor* background_ = nullptr;
    std::unique_ptr<LocalDates> dates_; ///< null without a result
    std::optional<Hits> hits_;          ///< absent without a search
    bool isComplete_ = true;
    /// Kept because the roles of one row are requested one after another.
    mutable std::optional<std::pair<std::size_t, MessageEntry>> lastEntry_;
    Task searching_;
};

} // namespace vorn
