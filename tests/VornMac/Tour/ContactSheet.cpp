#include "tests/VornMac/Tour/ContactSheet.h"

#include <QPainter>

namespace vorn::testing {
namespace {

constexpr int columns = 3;
constexpr int gap = 8;

} // namespace

bool ContactSheet::save(const std::string& path) const
{
    if (frames_.empty()) return true;
    constexpr QSize step(cell.width() + gap, cell.height() + gap);
    const int rows = (static_cast<int>(frames_.size()) + columns - 1) / columns;
    QImage sheet(columns * step.width() + gap, rows * step.height() + gap, QImage::Format_RGB32);
    sheet.fill(Qt::gray);
    QPainter painter(&sheet);
    for (int index = 0; const QImage& frame : frames_) {
        painter.drawImage(gap + index % columns * step.width(), gap + index / columns * step.height(), frame);
        ++index;
    }
    painter.end();
    return sheet.save(QString::fromStdString(path));
}

} // namespace vorn::testing
