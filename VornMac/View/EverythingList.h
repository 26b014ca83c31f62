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

/// Every message that was found, or those that match a search. Shares the export result and makes a row when it is
/// requested: a million messages take no more memory, and a search four bytes for each match. Roles are the parts of a
/// `MessageEntry`, and `spoken` for a screen reader. Threads: the model's.
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

    /// Shows `exportResult`, which may be null, without a search. Searches run in `background` and return to `context`.
    /// Both outlive this, and `context` is shut down first.
    void show(AppModel::ExportResult exportResult, MainContext* context, BackgroundExecutor* background);
    /// Shows only the messages that hold `words`; all if there are none. The old rows stay until the first matches
    /// arrive; the others follow bit by bit.
    void search(std::string_view words);

    std::size_t count() const;                                   ///< of rows
    std::size_t total() const;                                   ///< of messages
    bool isSearch() const noexcept { return hits_.has_value(); } ///< whether the rows are matches of a search
    bool isComplete() const noexcept { return isComplete_; }     ///< whether a search has ended

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

signals:
    void listedChanged(); ///< the number of rows has changed, or a search has ended

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
    std::optional<Hits> hits_;          ///< nothing without a search
    bool isComplete_ = true;
    /// The roles of one row are requested one after the other.
    mutable std::optional<std::pair<std::size_t, MessageEntry>> lastEntry_;
    Task searching_;
};

} // namespace vorn
