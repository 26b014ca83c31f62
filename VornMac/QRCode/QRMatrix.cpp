#include "VornMac/QRCode/QRMatrix.h"

#include "Platform/Base/Owned.h"

#include <new>
#include <stdexcept>

#include <qrencode.h>

namespace vorn {
namespace {

using Code = Owned<QRcode, QRcode_free>;

constexpr std::size_t longest = 2331; // bytes, in version 40 at level M
constexpr unsigned char darkBit = 1;  // the library's other bits describe a module's purpose

Code encode(std::string_view payload)
{
    if (payload.empty() || payload.size() > longest) throw std::length_error("the text fits no QR code");
    // Passed with its length: as a string, it would end at the first NUL.
    const auto* bytes = reinterpret_cast<const unsigned char*>(payload.data());
    Code code(QRcode_encodeData(static_cast<int>(payload.size()), bytes, 0, QR_ECLEVEL_M));
    if (!code) throw std::bad_alloc();
    return code;
}

} // namespace

QRMatrix::QRMatrix(std::string_view payload)
{
    const Code code = encode(payload);
    size_ = static_cast<std::size_t>(code->width);
    for (std::size_t module = 0; module < size_ * size_; ++module) {
        dark_.push_back((code->data[module] & darkBit) != 0);
    }
}

bool QRMatrix::isDark(int row, int column) const
{
    if (row < 0 || column < 0 || row >= size() || column >= size()) return false;
    return dark_[static_cast<std::size_t>(row) * size_ + static_cast<std::size_t>(column)];
}

} // namespace vorn
