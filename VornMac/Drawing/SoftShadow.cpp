#include "VornMac/Drawing/SoftShadow.h"

#include <QPainter>

namespace vorn {

SoftShadow::SoftShadow(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    connect(this, &SoftShadow::looksChanged, this, [this] { update(); });
}

// Rounded rectangles of the same faint colour on each other: no renderer needs an effect for that.
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
