#include "Tools/Terminal/QRCodeText.h"
#include "tests/Tools/Terminal/QRReader.h"

#include <stdexcept>

#include <gtest/gtest.h>

namespace vorn {
namespace {

using testing::ScreenImage;
using Blocks = ScreenImage::Blocks;
using Ink = QRCodeText::Ink;

const std::string link = "vorn://link?code=0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef";

TEST(QRCodeText, IsReadWithColoursOnAnyTerminal)
{
    const QRCodeText code(link, Ink::colours);
    for (const Blocks blocks : {Blocks::dark, Blocks::light}) {
        EXPECT_EQ(ScreenImage(code.lines(), blocks).read(), link);
    }
}

TEST(QRCodeText, IsReadWithoutColoursOnTheTerminalItIsMeantFor)
{
    EXPECT_EQ(ScreenImage(QRCodeText(link, Ink::darkBackground).lines(), Blocks::light).read(), link);
    EXPECT_EQ(ScreenImage(QRCodeText(link, Ink::lightBackground).lines(), Blocks::dark).read(), link);
}

TEST(QRCodeText, SetsNoColoursOfItsOwnWithoutThem)
{
    for (const Ink ink : {Ink::darkBackground, Ink::lightBackground}) {
        const QRCodeText code(link, ink);
        for (const std::string& line : code.lines()) EXPECT_EQ(line.find('\x1B'), std::string::npos);
    }
}

TEST(QRCodeText, KeepsFourLightModulesAllAround)
{
    EXPECT_EQ(ScreenImage(QRCodeText(link, Ink::colours).lines(), Blocks::dark).quietZone(), 4);
    EXPECT_EQ(ScreenImage(QRCodeText(link, Ink::darkBackground).lines(), Blocks::light).quietZone(), 4);
    EXPECT_EQ(ScreenImage(QRCodeText(link, Ink::lightBackground).lines(), Blocks::dark).quietZone(), 4);
}

TEST(QRCodeText, FitsIntoEightyColumnsUpToThreeHundredBytes)
{
    const std::string long300 = "https://" + std::string(292, 'x');
    const QRCodeText code(long300, Ink::colours);
    EXPECT_LE(code.columns(), 80);
    EXPECT_EQ(ScreenImage(code.lines(), Blocks::dark).read(), long300);
}

TEST(QRCodeText, RefusesWhatFitsNoCode)
{
    EXPECT_THROW(QRCodeText(std::string(5000, 'x'), Ink::colours), std::length_error);
    EXPECT_THROW(QRCodeText("", Ink::colours), std::length_error);
}

} // namespace
} // namespace vorn
