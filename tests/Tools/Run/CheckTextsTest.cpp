// scripts/check-texts on trees of one or two files.
#include "tests/support/Program.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <fstream>
#include <string>

#include <gmock/gmock.h>

namespace vorn {
namespace {

using testing::Program;

constexpr const char* good = "every sentence for users stands once\n";

class CheckTexts : public ::testing::Test {
protected:
    void write(const std::string& path, const std::string& text)
    {
        const std::filesystem::path file = tree_ / path;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file) << text;
    }
    std::string check()
    {
        Program program("/usr/bin/env", {"python3", CHECK_TEXTS, tree_ / ""});
        status_ = program.exitCode();
        return program.output();
    }
    std::string checkQML(const std::string& line)
    {
        write("VornMac/qml/Part.qml", "import QtQuick\n\n" + line + "\n");
        return check();
    }

    testing::TemporaryFolder tree_;
    int status_ = -1;
};

TEST_F(CheckTexts, PassesASentenceThatStandsOnce)
{
    write("VornMac/Text/A.cpp", "// \"Look at me.\"\n/* \"Look at me.\" */ auto a = \"Look at me.\";\n");
    EXPECT_EQ(check(), good);
    EXPECT_EQ(status_, 0);
}

TEST_F(CheckTexts, RefusesASentenceInTwoPlacesOfTheProduct)
{
    write("VornMac/Text/A.cpp", "auto a = \"Look at me.\";\n");
    write("Tools/Terminal/B.h",
          "\nauto b = \"look \"\n         \"at me?\";\nauto c = \"Look at \"\n         \"me?\";\n");
    EXPECT_EQ(check(), "\"Look at me\" is written in Tools/Terminal/B.h:4 and VornMac/Text/A.cpp:1\n");
    EXPECT_EQ(status_, 1);
}

TEST_F(CheckTexts, RefusesAPartOfALongerText)
{
    write("Tools/A.cpp", "auto a = \"You are offline now. Run it again.\";\n");
    write("VornMac/B.cpp", "auto b = f(\"It is late.\\nRun it again\");\n");
    EXPECT_EQ(check(), "\"Run it again\" is written in Tools/A.cpp:1 and VornMac/B.cpp:1\n");
}

TEST_F(CheckTexts, LeavesWhatIsNotForUsersAlone)
{
    write("VornMac/A.cpp",
          "auto a = \"keychain save failed: \", b = \"SELECT a FROM b\", c = \"Authorization\", d = '\"';\n"
          "auto e = \"Try again\", f = \"No luck at all. Try again.\";\n");
    write("VornMacCore/A.cpp",
          "auto a = \"keychain save failed: \", b = \"SELECT a FROM b\", c = \"Authorization\";\n");
    write("tests/A.cpp", "auto e = \"Try again\";\n");
    EXPECT_EQ(check(), good);
}

TEST_F(CheckTexts, RefusesEveryWordInQML)
{
    EXPECT_EQ(checkQML("Text { text: \"Back\" }"), "VornMac/qml/Part.qml:3 says \"Back\" itself\n");
    EXPECT_EQ(status_, 1);
    EXPECT_EQ(checkQML("Text { text: n + ' percent' }"), "VornMac/qml/Part.qml:3 says \" percent\" itself\n");
    EXPECT_EQ(checkQML("Text { text: `in ${n}` }"), "VornMac/qml/Part.qml:3 says \"in ${n}\" itself\n");
    EXPECT_EQ(checkQML("Text { Accessible.name: \"Über\" }"), "VornMac/qml/Part.qml:3 says \"Über\" itself\n");
}

TEST_F(CheckTexts, AllowsInQMLWhatNoUserReads)
{
    write("VornMac/Drawing/symbols/person.2.slash.svg", "");
    for (const char* line :
         {"Item { objectName: \"main\" } // \"Back\"", "Symbol { name: \"person.2.slash\" }",
          "color: on ? \"#0D1214\" : \"transparent\"", "source: \"LinkScreen.qml\"", "Accessible.name: a + \". \" + b",
          "property var hebrew: /[\"\\u0590-x]/", "Animator { property: \"opacity\" }"})
        EXPECT_EQ(checkQML(line), good) << line;
    EXPECT_EQ(checkQML("Symbol { name: \"person\" }"), "VornMac/qml/Part.qml:3 says \"person\" itself\n");
}

} // namespace
} // namespace vorn
