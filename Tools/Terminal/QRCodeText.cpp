#include "Tools/Terminal/QRCodeText.h"

#include "VornMac/QRCode/QRMatrix.h"

namespace vorn {
namespace {

constexpr int quietZone = QRMatrix::quietZone;

// From the fixed part of the 256 colours: themes redefine the first sixteen.
constexpr const char* blackOnWhite = "\x1B[38;5;16;48;5;231m";
constexpr const char* usualColours = "\x1B[0m";

const char* block(bool upper, bool lower)
{
    if (upper && lower) return "█";
    if (upper) return "▀";
    return lower ? "▄" : " ";
}

std::string lineOf(const QRMatrix& code, int row, QRCodeText::Ink ink)
{
    const bool blocksAreDark = ink != QRCodeText::Ink::darkBackground;
    std::string line;
    for (int column = -quietZone; column < code.size() + quietZone; ++column) {
        line += block(code.isDark(row, column) == blocksAreDark, code.isDark(row + 1, column) == blocksAreDark);
    }
    return ink == QRCodeText::Ink::colours ? blackOnWhite + line + usualColours : line;
}

} // namespace

QRCodeText::QRCodeText(std::string_view payload, Ink ink)
{
    const QRMatrix code(payload);
    columns_ = code.size() + 2 * quietZone;
    for (int row = -quietZone; row < code.size() + quietZone; row += 2) {
        lines_.push_back(lineOf(code, row, ink));
    }
}

} // namespace vorn
