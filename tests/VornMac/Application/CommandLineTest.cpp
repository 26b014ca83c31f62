#include "VornMac/Application/CommandLine.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// Arguments as `main` gets them.
struct Arguments {
    explicit Arguments(std::vector<std::string> given) : texts(std::move(given))
    {
        texts.insert(texts.begin(), "VornMac");
        for (std::string& text : texts) pointers.push_back(text.data());
    }
    std::vector<std::string> texts;
    std::vector<char*> pointers;
};

TEST(CommandLine, TakesDefaultsOutOfWhatQtSees)
{
    Arguments given({"-VornAppearance", "dark", "-platform", "offscreen", "-VornReduceMotion", "1"});
    CommandLine line(static_cast<int>(given.pointers.size()), given.pointers.data());
    EXPECT_EQ(line.defaults(), (LayeredDefaults::Line{{"VornAppearance", "dark"}, {"VornReduceMotion", "1"}}));
    ASSERT_EQ(line.count(), 3);
    EXPECT_STREQ(line.values()[0], "VornMac");
    EXPECT_STREQ(line.values()[1], "-platform");
    EXPECT_STREQ(line.values()[2], "offscreen");
    EXPECT_EQ(line.values()[3], nullptr);
    EXPECT_EQ(line.unknown(), std::nullopt);
    EXPECT_EQ(line.mistake(), std::nullopt);
}

TEST(CommandLine, NamesWhatNobodyTakes)
{
    struct Case {
        std::vector<std::string> arguments;
        const char* mistake;
    };
    for (const Case& each : {
             Case{{"chat.db"}, "There is no argument chat.db"},
             Case{{"-platform", "offscreen", "--frobnicate"}, "There is no argument --frobnicate"},
             Case{{"-style=fusion", "--reverse", "x"}, "There is no argument x"},
             Case{{"-psn_0_4711"}, ""},
             Case{{"-NSDocumentRevisionsDebugMode", "YES"}, ""},
             Case{{"-VornApearance", "dark"},
                  "There is no -VornApearance, only -VornAPIBaseURLOverride, "
                  "-VornMessagesDatabaseOverride, -VornSettingsFile, -VornAppearance, -VornReduceMotion and "
                  "-VornForgetsSession"},
             Case{{"-VornAppearance", "blue"}, "-VornAppearance must be light or dark, not \"blue\""},
         }) {
        SCOPED_TRACE(::testing::PrintToString(each.arguments));
        Arguments given(each.arguments);
        const CommandLine line(static_cast<int>(given.pointers.size()), given.pointers.data());
        EXPECT_EQ(line.mistake().value_or(""), each.mistake);
    }
}

TEST(CommandLine, RunsWithoutArguments)
{
    Arguments given({});
    const CommandLine line(1, given.pointers.data());
    EXPECT_THAT(line.defaults(), IsEmpty());
    EXPECT_EQ(line.answer(), std::nullopt);
    EXPECT_EQ(line.unknown(), std::nullopt);
}

TEST(CommandLine, AnswersWithoutAWindow)
{
    for (const auto& [option, part] : std::map<std::string, std::string>{
             {"--version", "Vorn 1."}, {"--help", "Usage: VornMac"}, {"-h", "-VornAPIBaseURLOverride"}}) {
        SCOPED_TRACE(option);
        Arguments given({option});
        const CommandLine line(2, given.pointers.data());
        EXPECT_THAT(line.answer().value_or("nothing"), HasSubstr(part));
    }
}

} // namespace
} // namespace vorn
