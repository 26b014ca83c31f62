#include "VornMac/Drawing/SoftShadow.h"

#include <algorithm>

#include <QPainter>

namespace vorn {

// The shadow is painted at half size and enlarged: it has no detail to lose, and may be as large as the largest card.
void SoftShadow::geometryChange(const QRectF& now, const QRectF& before)
{
    constexpr int pointsInPixel = 2;
    PaintedItem::geometryChange(now, before);
    setTextureSize((now.size() / pointsInPixel).toSize());
}

// Nested rounded rectangles, each with an opacity of its own: this works in every renderer, without effects. Each
// replaces what it covers: blending colours this faint would round them away.
void SoftShadow::paint(QPainter* painter)
{
    const int layers = std::max(1, static_cast<int>(2 * blur_));
    painter->setCompositionMode(QPainter::CompositionMode_Source);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    for (int index = 0; index < layers; ++index) {
        const qreal depth = (index + 0.5) / layers;
        const qreal inset = 2 * blur_ * index / layers;
        QColor layer = color_;
        layer.setAlphaF(color_.alphaF() * static_cast<float>(depth * depth * (3 - 2 * depth))); // like a blur's falloff
        painter->setBrush(layer);
        const qreal corner = std::max(radius_, radius_ + blur_ - inset);
        painter->drawRoundedRect(boundingRect().adjusted(inset, inset, -inset, -inset), corner, corner);
    }
}

} // namespace vorn
