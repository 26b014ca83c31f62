#include "Tools/Terminal/QRCodeText.h"

#include <memory>
#include <stdexcept>

#include <qrencode.h>

namespace vorn {
namespace {

constexpr int quietZone = 4; // modules on each side, as the standard asks for

// From the fixed part of the palette of 256 colours: themes redefine the first sixteen.
constexpr const char* blackOnWhite = "\x1B[38;5;16;48;5;231m";
constexpr const char* usualColours = "\x1B[0m";

class Modules {
public:
    explicit Modules(std::string_view payload)
        : code_(QRcode_encodeData(static_cast<int>(payload.size()),
                                  reinterpret_cast<const unsigned char*>(payload.data()), 0, QR_ECLEVEL_M),
                &QRcode_free)
    {
        if (!code_) throw std::length_error("the text fits no QR code");
    }

    int size() const { return code_->width; }

    /// Everything around the code is light.
    bool isDark(int row, int column) const
    {
        if (row < 0 || column < 0 || row >= size() || column >= size()) return false;
        return (code_->data[row * size() + column] & 1) != 0;
    }

private:
    std::unique_ptr<QRcode, decltype(&QRcode_free)> code_;
};

const char* block(bool upper, bool lower)
{
    if (upper && lower) return "█";
    if (upper) return "▀";
    return lower ? "▄" : " ";
}

std::string lineOf(const Modules& modules, int row, QRCodeText::Ink ink)
{
    const bool blocksAreDark = ink != QRCodeText::Ink::darkBackground;
    std::string line;
    for (int column = -quietZone; column < modules.size() + quietZone; ++column) {
        line += block(modules.isDark(row, column) == blocksAreDark, modules.isDark(row + 1, column) == blocksAreDark);
    }
    return ink == QRCodeText::Ink::colours ? blackOnWhite + line + usualColours : line;
}

} // namespace

QRCodeText::QRCodeText(std::string_view payload, Ink ink)
{
    const Modules modules(payload);
    columns_ = modules.size() + 2 * quietZone;
    for (int row = -quietZone; row < modules.size() + quietZone; row += 2) {
        lines_.push_back(lineOf(modules, row, ink));
    }
}

} // namespace vorn
