#include "VornMac/View/PreviewList.h"

#include "VornMac/Text/Preview.h"

#include <utility>

namespace vorn {

void PreviewList::show(const AppModel::Export& found)
{
    std::vector<Bubble> bubbles;
    if (found) {
        for (const PreviewedMessage& message : previewOf(found->messages))
            bubbles.push_back({QString::fromStdString(message.text), message.fromMe});
    }
    show(std::move(bubbles));
}

void PreviewList::show(const PreviewList& other)
{
    show(other.bubbles_);
}

void PreviewList::show(std::vector<Bubble> bubbles)
{
    if (bubbles == bubbles_) return;
    beginResetModel();
    bubbles_ = std::move(bubbles);
    endResetModel();
}

int PreviewList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(bubbles_.size()); // a list: its rows have none below
}

QVariant PreviewList::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount()) return {};
    const Bubble& bubble = bubbles_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case textRole: return bubble.text;
    case fromMeRole: return bubble.fromMe;
    default: return {};
    }
}

QHash<int, QByteArray> PreviewList::roleNames() const
{
    return {{textRole, "text"}, {fromMeRole, "fromMe"}};
}

} // namespace vorn
