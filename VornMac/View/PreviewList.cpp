#include "VornMac/View/PreviewList.h"

#include "VornMac/View/ShownText.h"

#include <utility>

namespace vorn {

void PreviewList::show(const AppModel::ExportResult& exportResult)
{
    show(exportResult ? previewOf(exportResult->messages) : std::vector<PreviewedMessage>{});
}

void PreviewList::show(const std::vector<PreviewedMessage>& messages)
{
    std::vector<Bubble> bubbles;
    bubbles.reserve(messages.size());
    for (const PreviewedMessage& message : messages)
        bubbles.push_back({shown(message.text), shown(spokenText(message)), message.fromMe});
    showBubbles(std::move(bubbles));
}

void PreviewList::show(const PreviewList& other)
{
    showBubbles(other.bubbles_);
}

void PreviewList::showBubbles(std::vector<Bubble> bubbles)
{
    if (bubbles == bubbles_) return;
    beginResetModel();
    bubbles_ = std::move(bubbles);
    endResetModel();
}

int PreviewList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(bubbles_.size()); // a list: its rows have no children
}

QVariant PreviewList::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount()) return {};
    const Bubble& bubble = bubbles_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case textRole: return bubble.text;
    case spokenRole: return bubble.spoken;
    case fromMeRole: return bubble.fromMe;
    default: return {};
    }
}

QHash<int, QByteArray> PreviewList::roleNames() const
{
    return {{textRole, "text"}, {spokenRole, "spoken"}, {fromMeRole, "fromMe"}};
}

} // namespace vorn
