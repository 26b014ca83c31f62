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

/// Every message that was found, or those in which something is searched for. It shares the export result and works a
/// row out when it is asked for: a million messages take no more memory, and a search four bytes for each that it
/// finds. Roles are the parts of a `MessageEntry`, and `spoken` for a screen reader. Threads: the model's.
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
    /// How many messages are searched before what was found is shown: a few milliseconds' work.
    static constexpr std::size_t searchedAtOnce = 16'384;

    EverythingList();
    ~EverythingList() override;

    /// Shows `exportResult`, which may be null, without a search. Searches run in `background`, and come back to
    /// `context`; both outlive this, and `context` is shut down before it goes.
    void show(AppModel::ExportResult exportResult, MainContext* context, BackgroundExecutor* background);
    /// Shows only the messages that hold `words`; all where there are none. What was shown stays until something was
    /// searched, and the rest comes bit by bit.
    void search(std::string_view words);

    std::size_t count() const;                                   ///< of the rows
    std::size_t total() const;                                   ///< of the messages
    bool isSearch() const noexcept { return hits_.has_value(); } ///< whether the rows are what a search has found
    bool isComplete() const noexcept { return isComplete_; }     ///< whether a search has come to its end

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

signals:
    void listedChanged(); ///< how many rows there are, or that a search is complete

private:
    using Hits = std::vector<std::uint32_t>; ///< places in the export result

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
    /// The roles of one row are asked for one after the other.
    mutable std::optional<std::pair<std::size_t, MessageEntry>> lastEntry_;
    Task searching_;
};

} // namespace vorn
