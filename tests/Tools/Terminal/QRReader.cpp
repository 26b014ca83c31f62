#include "tests/Tools/Terminal/QRReader.h"

#include "Platform/Base/Text.h"
#include "tests/support/Program.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <stdexcept>

namespace vorn::testing {
namespace {

constexpr std::string_view blackOnWhite = "\x1B[38;5;16;48;5;231m";
constexpr std::string_view usualColours = "\x1B[0m";
constexpr int pixelsAModule = 4;

struct Cell {
    bool upper, lower;
};

Cell blocksOf(char32_t character)
{
    switch (character) {
    case U' ': return {false, false};
    case U'▀': return {true, false};
    case U'▄': return {false, true};
    case U'█': return {true, true};
    default: throw std::runtime_error("not a half block");
    }
}

/// The characters between the colours, if the line sets any.
std::string_view content(std::string_view line, bool& isColoured)
{
    isColoured = line.starts_with(blackOnWhite) && line.ends_with(usualColours);
    if (!isColoured) return line;
    line.remove_prefix(blackOnWhite.size());
    line.remove_suffix(usualColours.size());
    return line;
}

} // namespace

ScreenImage::ScreenImage(const std::vector<std::string>& lines, Blocks blocks)
{
    for (const std::string& line : lines) {
        bool isColoured = false;
        std::vector<bool> upper;
        std::vector<bool> lower;
        for (const char32_t character : text::scalars(content(line, isColoured))) {
            const Cell cell = blocksOf(character);
            const bool blockIsDark = isColoured || blocks == Blocks::dark;
            upper.push_back(cell.upper == blockIsDark);
            lower.push_back(cell.lower == blockIsDark);
        }
        rows_.push_back(upper);
        rows_.push_back(lower);
    }
}

std::string ScreenImage::read() const
{
    std::string image = "P5\n" + std::to_string(width() * pixelsAModule) + " " +
                        std::to_string(height() * pixelsAModule) + "\n255\n"; // portable graymap
    for (int y = 0; y < height() * pixelsAModule; ++y) {
        for (int x = 0; x < width() * pixelsAModule; ++x) {
            image += isDark(x / pixelsAModule, y / pixelsAModule) ? '\0' : '\xFF';
        }
    }
    const TemporaryFolder folder;
    writeFile(folder / "code.pgm", image);
    Program reader(QR_READER, {"--quiet", "--raw", "-Sdisable", "-Sqrcode.enable", folder / "code.pgm"});
    reader.exitCode();
    std::string text = reader.output();
    if (text.ends_with('\n')) text.pop_back();
    return text;
}

int ScreenImage::quietZone() const
{
    int smallest = std::min(width(), height());
    for (int y = 0; y < height(); ++y) {
        for (int x = 0; x < width(); ++x) {
            if (isDark(x, y)) smallest = std::min({smallest, x, y, width() - 1 - x, height() - 1 - y});
        }
    }
    return smallest;
}

} // namespace vorn::testing
