#include "tests/VornMac/Tour/PictureDifference.h"

#include <cstdlib>

namespace vorn::testing {
namespace {

constexpr int visible = 40; // of 255

bool differs(QRgb one, QRgb other)
{
    return std::abs(qRed(one) - qRed(other)) > visible || std::abs(qGreen(one) - qGreen(other)) > visible ||
           std::abs(qBlue(one) - qBlue(other)) > visible;
}

} // namespace

double pictureDifference(const QImage& one, const QImage& other)
{
    if (one.size() != other.size() || one.isNull()) return 1;
    const QImage left = one.convertToFormat(QImage::Format_RGB32);
    const QImage right = other.convertToFormat(QImage::Format_RGB32);
    qint64 count = 0;
    for (int y = 0; y < left.height(); ++y) {
        const auto* leftRow = reinterpret_cast<const QRgb*>(left.constScanLine(y));
        const auto* rightRow = reinterpret_cast<const QRgb*>(right.constScanLine(y));
        for (int x = 0; x < left.width(); ++x) count += differs(leftRow[x], rightRow[x]) ? 1 : 0;
    }
    return double(count) / (double(left.width()) * left.height());
}

} // namespace vorn::testing
