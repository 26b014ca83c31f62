#include "VornMac/View/PreviewList.h"

#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

namespace vorn {
namespace {

using ::testing::ElementsAre;
using Bubble = std::pair<std::string, bool>; // the text, and whether the user wrote it

ExportedMessage message(const std::string& text, bool fromMe = false)
{
    ExportedMessage result;
    result.text = text;
    result.fromMe = fromMe;
    return result;
}

AppModel::ExportResult exportOf(MessageList messages)
{
    return std::make_shared<NimbrelExportResult>(NimbrelExportResult{{}, std::move(messages), {}});
}

MessageList numbered(int count)
{
    MessageList messages;
    for (int number = 1; number <= count; ++number) messages.push_back(message(std::to_string(number)));
    return messages;
}

class Preview : public ::testing::Test {
protected:
    Preview()
    {
        QObject::connect(&list_, &QAbstractItemModel::modelReset, &list_, [this] { ++resets_; });
    }

    std::vector<Bubble> bubbles() const
    {
        std::vector<Bubble> bubbles;
        for (int row = 0; row < list_.rowCount(); ++row) {
            const QModelIndex index = list_.index(row);
            bubbles.emplace_back(list_.data(index, PreviewList::textRole).toString().toStdString(),
                                 list_.data(index, PreviewList::fromMeRole).toBool());
        }
        return bubbles;
    }
    std::string only() const { return bubbles().at(0).first; }

    PreviewList list_;
    int resets_ = 0;
};

TEST_F(Preview, IsEmptyAtFirst)
{
    EXPECT_EQ(list_.rowCount(), 0);
    list_.show(nullptr);
    list_.show(exportOf({}));
    EXPECT_EQ(list_.rowCount(), 0);
    EXPECT_EQ(resets_, 0);
}

TEST_F(Preview, ShowsAllOfThreeMessages)
{
    list_.show(exportOf({message("a", true), message("b"), message("c\nd")}));
    EXPECT_THAT(bubbles(), ElementsAre(Bubble("a", true), Bubble("b", false), Bubble("c\nd", false)));
}

TEST_F(Preview, ShowsTheLastSixOfForty)
{
    list_.show(exportOf(numbered(40)));
    EXPECT_THAT(bubbles(), ElementsAre(Bubble("35", false), Bubble("36", false), Bubble("37", false),
                                       Bubble("38", false), Bubble("39", false), Bubble("40", false)));
}

TEST_F(Preview, CutsAfterOneHundredAndFortyCharacters)
{
    std::string foxes;
    for (int count = 0; count < 140; ++count) foxes += "🦊";
    list_.show(exportOf({message(foxes)}));
    EXPECT_EQ(only(), foxes);
    list_.show(exportOf({message(foxes + "!")}));
    EXPECT_EQ(only(), foxes + "…");
}

TEST_F(Preview, HasAWordForWhatHasNoText)
{
    ExportedMessage photo = message("");
    photo.attachments.push_back({"image/jpeg"});
    list_.show(exportOf({photo, message("", true)}));
    EXPECT_THAT(bubbles(), ElementsAre(Bubble("Attachment", false), Bubble("…", true)));
}

TEST_F(Preview, IsResetOnlyWhenItChanges)
{
    list_.show(exportOf(numbered(6)));
    EXPECT_EQ(resets_, 1);
    list_.show(exportOf(numbered(6))); // found again
    EXPECT_EQ(resets_, 1);
    MessageList other = numbered(6);
    other.back().fromMe = true;
    list_.show(exportOf(std::move(other)));
    EXPECT_EQ(resets_, 2);
    list_.show(nullptr);
    EXPECT_EQ(resets_, 3);
    EXPECT_EQ(list_.rowCount(), 0);
}

TEST_F(Preview, NamesItsRolesAndHasNothingElse)
{
    EXPECT_EQ(list_.roleNames().value(PreviewList::textRole), "text");
    EXPECT_EQ(list_.roleNames().value(PreviewList::fromMeRole), "fromMe");
    list_.show(exportOf(numbered(1)));
    EXPECT_FALSE(list_.data(list_.index(0), Qt::DisplayRole).isValid());
    EXPECT_FALSE(list_.data(list_.index(1), PreviewList::textRole).isValid());
    EXPECT_EQ(list_.rowCount(list_.index(0)), 0);
}

} // namespace
} // namespace vorn
