#include "VornMac/Drawing/SoftShadow.h"

#include <QPainter>

namespace vorn {

SoftShadow::SoftShadow(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    connect(this, &SoftShadow::looksChanged, this, [this] { update(); });
}

// Stacked rounded rectangles of one faint colour: works without effects in every renderer.
void SoftShadow::paint(QPainter* painter)
{
    constexpr int layers = 12;
    QColor layer = color_;
    layer.setAlphaF(color_.alphaF() / layers);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(layer);
    for (int index = 0; index < layers; ++index) {
        const qreal inset = blur_ * index / layers;
        const QRectF frame = boundingRect().adjusted(inset, inset, -inset, -inset);
        const qreal corner = radius_ + blur_ - inset;
        painter->drawRoundedRect(frame, corner, corner);
    }
}

} // namespace vorn
