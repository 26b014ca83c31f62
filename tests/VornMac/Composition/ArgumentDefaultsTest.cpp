#include "VornMac/Composition/ArgumentDefaults.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using ::testing::ElementsAre;
using Arguments = std::vector<std::string>;

TEST(ArgumentDefaults, TakesPairsOutOfAnyPlace)
{
    Arguments arguments = {"-Url", "a", "upload", "-Path", "b", "file.zip", "--json", "-Last", "c"};
    const auto defaults = ArgumentDefaults::takenFrom(arguments);
    EXPECT_THAT(arguments, ElementsAre("upload", "file.zip", "--json"));
    EXPECT_EQ(defaults.text("Url"), "a");
    EXPECT_EQ(defaults.text("Path"), "b");
    EXPECT_EQ(defaults.text("Last"), "c");
    EXPECT_EQ(defaults.text("Other"), std::nullopt);
}

TEST(ArgumentDefaults, LetsTheLastValueOfAKeyCount)
{
    Arguments arguments = {"-Key", "first", "-Key", "second"};
    EXPECT_EQ(ArgumentDefaults::takenFrom(arguments).text("Key"), "second");
}

TEST(ArgumentDefaults, TakesValuesThatLookLikeOptions)
{
    Arguments arguments = {"-Key", "-Value", "-Number", "--", "rest"};
    const auto defaults = ArgumentDefaults::takenFrom(arguments);
    EXPECT_EQ(defaults.text("Key"), "-Value");
    EXPECT_EQ(defaults.text("Number"), "--");
    EXPECT_THAT(arguments, ElementsAre("rest"));
}

TEST(ArgumentDefaults, LeavesWhatIsNoPair)
{
    const std::vector<Arguments> lines = {
        {},
        {"-h", "x"},
        {"--Key", "x"},
        {"-"},
        {"-1", "x"},
        {"Key", "x"},
        {"upload", "-Key"},
        {"--", "-Key", "x"},
        {"-\xC3\x84", "x"},
    };
    for (const Arguments& line : lines) {
        SCOPED_TRACE(::testing::PrintToString(line));
        Arguments arguments = line;
        EXPECT_EQ(ArgumentDefaults::takenFrom(arguments), ArgumentDefaults());
        EXPECT_EQ(arguments, line);
    }
}

} // namespace
} // namespace vorn
