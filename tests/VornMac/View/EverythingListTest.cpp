#include "VornMac/View/EverythingList.h"

#include "tests/support/ScopedEnvironment.h"
#include "tests/support/async/ManualExecutor.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

namespace vorn {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

ExportedMessage message(const std::string& text)
{
    ExportedMessage result;
    result.sentAt = 1'772'356'500; // 2026-03-01T09:15:00Z
    result.text = text;
    return result;
}

AppModel::ExportResult exportOf(MessageList messages)
{
    return std::make_shared<NimbrelExportResult>(NimbrelExportResult{{}, std::move(messages), {}});
}

class Everything : public ::testing::Test {
protected:
    Everything()
    {
        QObject::connect(&list_, &QAbstractItemModel::modelReset, &list_, [this] { ++resets_; });
    }
    ~Everything() override
    {
        finishSearch();
        context_.shutDown();
    }

    void show(MessageList messages) { list_.show(exportOf(std::move(messages)), &context_, &background_); }
    /// Messages for three batches of a search: every thousandth has "Tram", all have a number.
    void showMany()
    {
        MessageList messages;
        for (std::size_t number = 0; number < 2 * EverythingList::searchedAtOnce + 1; ++number)
            messages.push_back(message((number % 1000 == 0 ? "Tram " : "Bus ") + std::to_string(number)));
        show(std::move(messages));
    }
    void searchOnce()
    {
        context_.runUntilIdle();
        background_.run();
        context_.runUntilIdle();
    }
    void finishSearch()
    {
        do context_.runUntilIdle();
        while (background_.run());
    }

    std::string at(int row, EverythingList::Role role) const
    {
        return list_.data(list_.index(row), role).toString().toStdString();
    }
    std::vector<std::string> texts() const
    {
        std::vector<std::string> texts;
        for (int row = 0; row < list_.rowCount(); ++row) texts.push_back(at(row, EverythingList::textRole));
        return texts;
    }

    testing::ScopedEnvironment language_{"LC_ALL", "en_GB.UTF-8"};
    testing::ScopedEnvironment zone_{"TZ", "UTC"};
    MainContext context_;
    testing::ManualExecutor background_;
    EverythingList list_;
    int resets_ = 0;
};

TEST_F(Everything, IsNothingAtFirst)
{
    EXPECT_EQ(list_.rowCount(), 0);
    list_.search("tram");
    EXPECT_EQ(list_.rowCount(), 0);
    EXPECT_EQ(list_.total(), 0U);
}

TEST_F(Everything, ShowsEachMessageInItsRoles)
{
    ExportedMessage whole = message("Two\nlines");
    whole.fromMe = true;
    whole.service = RecordText("SMS");
    whole.links = {{"https://one.example/", {}}, {"https://two.example/", {}}};
    whole.attachments = {{"image/png"}};
    show({message("First"), whole});
    using List = EverythingList;
    EXPECT_EQ(list_.rowCount(), 2);
    EXPECT_EQ(at(0, List::textRole), "First");
    EXPECT_EQ(at(0, List::authorRole), "Nimbrel");
    EXPECT_EQ(at(0, List::fromMeRole), "false");
    EXPECT_EQ(at(1, List::dayRole), "1 Mar 2026");
    EXPECT_EQ(at(1, List::authorRole), "You");
    EXPECT_EQ(at(1, List::detailRole), "09:15:00 · SMS");
    EXPECT_EQ(at(1, List::textRole), "Two\nlines");
    EXPECT_EQ(at(1, List::restRole), "");
    EXPECT_EQ(at(1, List::linksRole), "https://one.example/\nhttps://two.example/");
    EXPECT_EQ(at(1, List::attachmentsRole), "Photo (image/png)");
    EXPECT_EQ(at(1, List::spokenRole), "You, 1 Mar 2026, 09:15:00 · SMS\nTwo\nlines\nhttps://one.example/\n"
                                       "https://two.example/\nPhoto (image/png)");
    EXPECT_EQ(at(1, List::fromMeRole), "true");
}

TEST_F(Everything, NamesItsRolesAndHasNothingElse)
{
    show({message("First")});
    EXPECT_THAT(list_.roleNames().values(), SizeIs(9));
    EXPECT_FALSE(list_.data(list_.index(0), Qt::DisplayRole).isValid());
    EXPECT_FALSE(list_.data(list_.index(1), EverythingList::textRole).isValid());
    EXPECT_EQ(list_.rowCount(list_.index(0)), 0);
}

TEST_F(Everything, OwnsWhatItShowsOnlyWhileItShowsIt)
{
    auto found = exportOf({message("First")});
    list_.show(found, &context_, &background_);
    list_.search("first");
    finishSearch();
    EXPECT_EQ(found.use_count(), 2);
    list_.show(nullptr, &context_, &background_);
    EXPECT_EQ(found.use_count(), 1);
    EXPECT_EQ(list_.rowCount(), 0);
}

TEST_F(Everything, ShowsWhatASearchFinds)
{
    show({message("Tram 12"), message("Bus"), message("The TRAM")});
    list_.search(" tram ");
    finishSearch();
    EXPECT_THAT(texts(), ElementsAre("Tram 12", "The TRAM"));
    EXPECT_TRUE(list_.isSearch());
    EXPECT_EQ(list_.total(), 3U);
    list_.search("  ");
    EXPECT_THAT(texts(), SizeIs(3)) << "at once";
    EXPECT_FALSE(list_.isSearch());
    EXPECT_TRUE(list_.isComplete());
}

TEST_F(Everything, GoesOnShowingUntilSomethingIsSearched)
{
    show({message("Tram"), message("Bus")});
    list_.search("bus");
    EXPECT_EQ(list_.rowCount(), 2);
    EXPECT_FALSE(list_.isComplete());
    finishSearch();
    EXPECT_THAT(texts(), ElementsAre("Bus"));
    list_.search("ferry");
    EXPECT_THAT(texts(), ElementsAre("Bus"));
    finishSearch();
    EXPECT_THAT(texts(), IsEmpty());
    EXPECT_TRUE(list_.isComplete());
}

TEST_F(Everything, AppendsWhatIsFoundBitByBit)
{
    showMany();
    resets_ = 0;
    list_.search("tram");
    searchOnce();
    EXPECT_EQ(list_.rowCount(), 17);
    EXPECT_FALSE(list_.isComplete());
    searchOnce();
    EXPECT_EQ(list_.rowCount(), 33);
    EXPECT_FALSE(list_.isComplete());
    searchOnce();
    EXPECT_EQ(list_.rowCount(), 33) << "nothing in the last one";
    EXPECT_TRUE(list_.isComplete());
    EXPECT_EQ(resets_, 1);
    EXPECT_EQ(at(32, EverythingList::textRole), "Tram 32000");
}

TEST_F(Everything, StopsASearchForTheNextOne)
{
    showMany();
    list_.search("tram");
    searchOnce();
    list_.search("bus");
    searchOnce();
    EXPECT_THAT(texts(), SizeIs(EverythingList::searchedAtOnce - 17));
    finishSearch();
    EXPECT_THAT(texts(), SizeIs(2 * EverythingList::searchedAtOnce + 1 - 33));
    EXPECT_THAT(texts(), Each(::testing::StartsWith("Bus")));
}

TEST_F(Everything, ForgetsASearchWithWhatWasSearched)
{
    showMany();
    list_.search("tram");
    searchOnce();
    show({message("Other")});
    finishSearch();
    EXPECT_THAT(texts(), ElementsAre("Other"));
}

} // namespace
} // namespace vorn
