#include "Tools/Terminal/LinkPrinter.h"
#include "Tools/Terminal/CommandFailure.h"
#include "tests/Tools/Terminal/QRReader.h"
#include "tests/Tools/Terminal/SaidLines.h"
#include "tests/support/ScopedEnvironment.h"

#include <sstream>

#include <gmock/gmock.h>

namespace vorn {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using testing::SaidLines;
using testing::ScopedEnvironment;
using testing::ScreenImage;
using Background = TerminalOptions::Background;
using Ink = QRCodeText::Ink;

/// The lines of the QR code in `text`, recognised by how they begin.
std::vector<std::string> codeIn(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        if (line.starts_with("\x1B[38") || line.starts_with("█") || line.starts_with("    ")) lines.push_back(line);
    }
    return lines;
}

TEST(LinkPrinter, TellsHowLinkingGoesOn)
{
    SaidLines said;
    LinkPrinter printer(said.terminal, {});
    printer.show(phase::Loading{}, std::nullopt);
    EXPECT_EQ(said.take(), "Getting a code…\n");
    printer.show(phase::Showing{}, "code-1");
    const std::string shown = said.take();
    EXPECT_THAT(shown, HasSubstr("  1. Open Vorn on your iPhone.\n"
                                 "  2. Open the Nimbrel chat quest and tap Link a Mac.\n"
                                 "  3. Point your camera at the code, then confirm on your phone.\n"));
    printer.show(phase::Scanned{}, std::nullopt);
    EXPECT_EQ(said.take(), "Scanned. Confirm Link this Mac on your phone.\n");
    printer.show(phase::Rejected{}, std::nullopt);
    EXPECT_EQ(said.take(), "Your phone declined the link. Here's a new code.\n");
    printer.show(phase::Loading{}, std::nullopt);
    said.take();
    printer.show(phase::Showing{}, "code-2");
    EXPECT_THAT(said.take(), Not(HasSubstr("Open Vorn on your iPhone"))); // explained once
}

TEST(LinkPrinter, DrawsTheCodeOfThePayload)
{
    SaidLines plain;
    LinkPrinter(plain.terminal, {}).show(phase::Showing{}, "code-1");
    EXPECT_EQ(ScreenImage(codeIn(plain.take()), ScreenImage::Blocks::light).read(), "code-1");
    SaidLines light;
    LinkPrinter(light.terminal, Background::light).show(phase::Showing{}, "code-1");
    EXPECT_EQ(ScreenImage(codeIn(light.take()), ScreenImage::Blocks::dark).read(), "code-1");
    SaidLines coloured({.isTerminal = true, .colours = true});
    LinkPrinter(coloured.terminal, {}).show(phase::Showing{}, "code-1");
    EXPECT_EQ(ScreenImage(codeIn(coloured.take()), ScreenImage::Blocks::light).read(), "code-1");
}

TEST(LinkPrinter, SaysOfARepeatedFailureOnce)
{
    SaidLines said;
    LinkPrinter printer(said.terminal, {});
    for (int attempt = 0; attempt < 3; ++attempt) {
        printer.show(phase::Loading{}, std::nullopt);
        printer.show(phase::Failed{"Vorn can't reach the server right now."}, std::nullopt);
    }
    EXPECT_EQ(said.take(), "Getting a code…\nVorn can't reach the server right now.\n");
    printer.show(phase::Failed{"Other \x1B[31mwords."}, std::nullopt);
    EXPECT_EQ(said.take(), "Other \uFFFD[31mwords.\n");
}

/// As long as a real service's payload: a prefix and 32 bytes in hexadecimal digits.
const std::string usualPayload = "vorn://link?code=" + std::string(64, '0');

TEST(LinkPrinter, DrawsTheCodeBelowAllWords)
{
    for (const bool colours : {true, false}) {
        SaidLines said({.isTerminal = true, .colours = colours});
        LinkPrinter(said.terminal, {}).show(phase::Showing{}, usualPayload);
        const std::string text = said.take();
        const std::string words = "Waiting for your phone\n";
        const auto end = text.find(words);
        ASSERT_NE(end, std::string::npos);
        const std::vector<std::string> code = codeIn(text.substr(end + words.size()));
        EXPECT_EQ(ScreenImage(code, ScreenImage::Blocks::light).read(), usualPayload);
        EXPECT_LT(code.size(), 24U); // the cursor stands on a line of its own
        EXPECT_TRUE(text.ends_with(code.back() + "\n"));
        EXPECT_THAT(text, Not(HasSubstr("taller")));
    }
}

TEST(LinkPrinter, AsksForAWiderWindowInsteadOfBreakingTheCode)
{
    SaidLines said({.isTerminal = true, .colours = true});
    said.window.columns = 28;
    LinkPrinter printer(said.terminal, {});
    printer.show(phase::Showing{}, "code-1");
    EXPECT_EQ(said.take(),
              "The code needs 29 columns, but this window has 28. Make it wider and run this again, or wait "
              "for the next code.\n");
    said.window.columns = 29;
    printer.show(phase::Showing{}, "code-2");
    EXPECT_EQ(ScreenImage(codeIn(said.take()), ScreenImage::Blocks::light).read(), "code-2");
}

TEST(LinkPrinter, SaysThatTheWindowIsTooLowBeforeTheCode)
{
    SaidLines said({.isTerminal = true, .colours = true});
    LinkPrinter printer(said.terminal, {});
    said.window.rows = 16; // 15 for the code, one for the cursor
    printer.show(phase::Showing{}, "code-1");
    EXPECT_THAT(said.take(), Not(HasSubstr("taller")));
    said.window.rows = 15;
    printer.show(phase::Showing{}, "code-2");
    const std::string text = said.take();
    EXPECT_THAT(text, HasSubstr("The code needs 16 lines. Make the window taller to see all of it.\n"));
    EXPECT_EQ(ScreenImage(codeIn(text), ScreenImage::Blocks::light).read(), "code-2");
}

TEST(LinkPrinter, MindsNoWindowWhereThereIsNone)
{
    SaidLines said;
    said.window = {.columns = 1, .rows = 1};
    LinkPrinter(said.terminal, {}).show(phase::Showing{}, "code-1");
    EXPECT_EQ(ScreenImage(codeIn(said.take()), ScreenImage::Blocks::light).read(), "code-1");
}

TEST(LinkPrinter, RefusesWhatFitsNoCode)
{
    SaidLines said;
    LinkPrinter printer(said.terminal, {});
    try {
        printer.show(phase::Showing{}, std::string(5000, 'x'));
        FAIL();
    } catch (const CommandFailure& failure) {
        EXPECT_EQ(failure, CommandFailure(TerminalStatus::refused, "The server sent a code that cannot be drawn."));
    }
    EXPECT_EQ(said.take(), "");
}

TEST(Terminal, ChoosesInkThatAPhoneCanRead)
{
    struct Case {
        const char* name;
        Terminal::Traits traits;
        std::optional<Background> told;
        Ink ink;
    };
    const std::vector<Case> cases = {
        {"colours", {.isTerminal = true, .colours = true}, {}, Ink::colours},
        {"colours, and a background", {.isTerminal = true, .colours = true}, Background::light, Ink::colours},
        {"nothing known", {}, {}, Ink::darkBackground},
        {"known to be light", {.background = Background::light}, {}, Ink::lightBackground},
        {"the user knows better", {.background = Background::light}, Background::dark, Ink::darkBackground},
    };
    for (const Case& each : cases) EXPECT_EQ(Terminal(stderr, each.traits).ink(each.told), each.ink) << each.name;
}

TEST(Terminal, ReadsTheBackgroundThatATerminalTells)
{
    struct Case {
        const char* told;
        std::optional<Background> background;
    };
    for (const Case& each :
         {Case{"15;0", Background::dark}, Case{"0;15", Background::light}, Case{"0;default;15", Background::light},
          Case{"0;7", Background::light}, Case{"15;default", {}}, Case{"", {}}, Case{"12", {}}, Case{"1;", {}}}) {
        const ScopedEnvironment environment("COLORFGBG", each.told);
        EXPECT_EQ(Terminal::currentTraits().background, each.background) << each.told;
    }
}

} // namespace
} // namespace vorn
