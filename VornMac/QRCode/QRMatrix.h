#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace vorn {

/// The modules of a QR code (ISO/IEC 18004, error correction level M). A value; threads: any.
class QRMatrix {
public:
    static constexpr int quietZone = 4; ///< light modules required on each side

    /// Encodes `payload`, bytes of any kind. Throws `std::length_error` if no QR code can hold it: if it is empty or
    /// longer than 2,331 bytes.
    explicit QRMatrix(std::string_view payload);

    int size() const noexcept { return static_cast<int>(size_); } ///< modules on each side

    /// Accepts any row and column: everything outside the code is light.
    bool isDark(int row, int column) const;

private:
    std::size_t size_ = 0;
    std::vector<bool> dark_; ///< row by row
};

} // namespace vorn
