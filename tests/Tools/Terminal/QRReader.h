#pragma once

#include <string>
#include <vector>

namespace vorn::testing {

/// A terminal's lines as they look: each character cell two pixels high, black and white, from its half blocks and, if
/// there are any, the colours that were set. Lines with anything else throw `std::runtime_error`.
class ScreenImage {
public:
    /// Blocks are `blocks`, the rest is the other colour, unless a line sets its colours itself.
    enum class Blocks { dark, light };
    ScreenImage(const std::vector<std::string>& lines, Blocks blocks);

    /// What a QR reader finds in the picture; empty when it finds nothing.
    std::string read() const;

    /// How many pixels the dark ones keep from each edge, at least.
    int quietZone() const;

private:
    bool isDark(int x, int y) const { return rows_[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)]; }
    int width() const { return static_cast<int>(rows_.front().size()); }
    int height() const { return static_cast<int>(rows_.size()); }

    std::vector<std::vector<bool>> rows_; ///< true: dark
};

} // namespace vorn::testing
