#include "VornMac/Drawing/CodeShape.h"

#include "VornMac/QRCode/QRMatrix.h"

#include <algorithm>
#include <cstdint>

#include <QPainter>

namespace vorn {
namespace {

constexpr int modules = 37; // per side, as many as the code of a link has
constexpr int quietZone = QRMatrix::quietZone;
constexpr int across = modules + 2 * quietZone;
constexpr int eye = 7; // the width of a finder pattern; three corners have one

/// Whether the module is part of a finder pattern or of the light separator around it.
bool isInEye(int row, int column)
{
    const auto isNear = [](int place) { return place <= eye; };
    const auto isFar = [](int place) { return place >= modules - eye - 1; };
    return (isNear(row) && (isNear(column) || isFar(column))) || (isFar(row) && isNear(column));
}

bool isDarkInEye(int row, int column)
{
    const auto place = [](int module) { return module <= eye ? module : modules - 1 - module; };
    const int edge = std::min({place(row), place(column), eye - 1 - place(row), eye - 1 - place(column)});
    return edge == 0 || edge >= 2;
}

/// Pseudo-random outside the finder patterns; the same each time.
bool isDark(int row, int column)
{
    if (isInEye(row, column)) return isDarkInEye(row, column);
    std::uint32_t mixed = static_cast<std::uint32_t>(row * modules + column + 1) * 2654435761U;
    mixed ^= mixed >> 15U;
    mixed *= 2246822519U;
    return ((mixed >> 13U) & 1U) != 0;
}

} // namespace

CodeShape::CodeShape(QQuickItem* parent) : PaintedItem(parent)
{
    setTextureSize({across, across}); // one pixel per module
    setSmooth(false);
}

int CodeShape::modulesAcross()
{
    return across;
}

void CodeShape::paint(QPainter* painter)
{
    const QPaintDevice* surface = painter->device(); // one pixel per module, times the screen's scale
    painter->resetTransform();
    painter->scale(surface->width() / double(across), surface->height() / double(across));
    for (int row = 0; row < modules; ++row) {
        for (int column = 0; column < modules; ++column) {
            if (isDark(row, column)) painter->fillRect(quietZone + column, quietZone + row, 1, 1, color_);
        }
    }
}

} // namespace vorn
