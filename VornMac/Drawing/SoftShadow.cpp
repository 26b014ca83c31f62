#include "VornMac/Drawing/SoftShadow.h"

#include <algorithm>

#include <QPainter>

namespace vorn {

// Rounded rectangles inside each other, each in its own strength: works without effects in every renderer. Each
// replaces what it covers: colours this faint would be rounded away if they were added up.
void SoftShadow::paint(QPainter* painter)
{
    const int layers = std::max(1, static_cast<int>(2 * blur_));
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setCompositionMode(QPainter::CompositionMode_Source);
    painter->setPen(Qt::NoPen);
    for (int index = 0; index < layers; ++index) {
        const qreal depth = (index + 0.5) / layers;
        const qreal inset = 2 * blur_ * index / layers;
        QColor layer = color_;
        layer.setAlphaF(color_.alphaF() * static_cast<float>(depth * depth * (3 - 2 * depth))); // as a blur falls off
        painter->setBrush(layer);
        const qreal corner = std::max(radius_, radius_ + blur_ - inset);
        painter->drawRoundedRect(boundingRect().adjusted(inset, inset, -inset, -inset), corner, corner);
    }
}

} // namespace vorn
