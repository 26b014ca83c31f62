#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vorn {

/// A QR code (ISO/IEC 18004, error correction level M) drawn with the half blocks "▀", "▄" and "█": one column and half
/// a line for each module, so that modules are about square, with four light modules all around. Threads: any.
class QRCodeText {
public:
    /// How to draw dark modules on a light ground: many phones read nothing else.
    enum class Ink {
        colours,         ///< sets black on white itself, whatever the terminal's colours are
        darkBackground,  ///< no colours: the terminal writes light on dark, so the blocks are the light modules
        lightBackground, ///< no colours: the terminal writes dark on light, so the blocks are the dark modules
    };

    /// Draws `payload`, bytes of any kind. Throws `std::length_error` when it does not fit any QR code.
    QRCodeText(std::string_view payload, Ink ink);

    const std::vector<std::string>& lines() const noexcept { return lines_; } ///< without line ends
    int columns() const noexcept { return columns_; }

private:
    std::vector<std::string> lines_;
    int columns_ = 0;
};

} // namespace vorn
