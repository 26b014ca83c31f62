#pragma once

#include <string>
#include <vector>

namespace vorn::testing {

/// A terminal's lines as they look: each character cell is two pixels high, black and white, from half blocks and, if
/// set, colours. Throws `std::runtime_error` for lines with anything else.
class ScreenImage {
public:
    /// The shade of block characters; the rest of a line has the other one. A line may override both with colours.
    enum class Blocks { dark, light };
    ScreenImage(const std::vector<std::string>& lines, Blocks blocks);

    /// The text that a QR reader finds in the picture; empty if it finds none.
    std::string read() const;

    /// The least distance of a dark pixel from an edge.
    int quietZone() const;

private:
    bool isDark(int x, int y) const { return rows_[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)]; }
    int width() const { return static_cast<int>(rows_.front().size()); }
    int height() const { return static_cast<int>(rows_.size()); }

    std::vector<std::vector<bool>> rows_; ///< true: dark
};

} // namespace vorn::testing
