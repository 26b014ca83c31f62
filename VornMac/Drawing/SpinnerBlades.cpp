#include "VornMac/Drawing/SpinnerBlades.h"

#include <algorithm>

#include <QPainter>

namespace vorn {
namespace {

constexpr int blades = 8;
constexpr double faintest = 0.15;

} // namespace

void SpinnerBlades::turn()
{
    ++turns_;
    emit looksChanged();
}

void SpinnerBlades::paint(QPainter* painter)
{
    const qreal side = std::min(width(), height());
    const qreal thickness = std::max(1.5, side * 0.11);
    const QRectF blade(-thickness / 2, -side / 2, thickness, side * 0.3);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(color_);
    painter->translate(boundingRect().center());
    painter->rotate(turns_ % blades * 360.0 / blades);
    for (int index = 1; index <= blades; ++index) {
        painter->setOpacity(faintest + (1 - faintest) * index / blades);
        painter->drawRoundedRect(blade, thickness / 2, thickness / 2);
        painter->rotate(360.0 / blades);
    }
}

} // namespace vorn
