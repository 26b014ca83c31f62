#include "VornMac/Drawing/SoftShadow.h"

#include <algorithm>
#include <cmath>

#include <QImage>
#include <QPainter>

namespace vorn {

// A large shadow is nine parts of a small one: along an edge nothing changes, and each layer fills all that it covers.
void SoftShadow::paint(QPainter* painter)
{
    painter->setCompositionMode(QPainter::CompositionMode_Source);
    const QRectF whole = boundingRect();
    const qreal ratio = painter->deviceTransform().m11();
    const int edge = static_cast<int>(std::ceil(2 * blur_ + std::max(radius_, 0.0)));
    const int side = 2 * edge + 2; // between the corners, what the edges consist of
    const bool hasWholePixels = ratio == std::floor(ratio);
    if (!hasWholePixels || side > whole.width() || side > whole.height()) return paintLayers(*painter, whole);

    QImage small(QSize(side, side) * ratio, QImage::Format_ARGB32_Premultiplied);
    small.fill(Qt::transparent);
    QPainter onSmall(&small);
    onSmall.scale(ratio, ratio);
    onSmall.setCompositionMode(QPainter::CompositionMode_Source);
    paintLayers(onSmall, QRectF(0, 0, side, side));
    onSmall.end();
    paintParts(*painter, small, edge, ratio);
}

// Rounded rectangles inside each other, each in its own strength: works without effects in every renderer. Each
// replaces what it covers: colours this faint would be rounded away if they were added up.
void SoftShadow::paintLayers(QPainter& painter, const QRectF& rect) const
{
    const int layers = std::max(1, static_cast<int>(2 * blur_));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (int index = 0; index < layers; ++index) {
        const qreal depth = (index + 0.5) / layers;
        const qreal inset = 2 * blur_ * index / layers;
        QColor layer = color_;
        layer.setAlphaF(color_.alphaF() * static_cast<float>(depth * depth * (3 - 2 * depth))); // as a blur falls off
        painter.setBrush(layer);
        const qreal corner = std::max(radius_, radius_ + blur_ - inset);
        painter.drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), corner, corner);
    }
}

void SoftShadow::paintParts(QPainter& painter, const QImage& small, qreal edge, qreal ratio) const
{
    const QRectF whole = boundingRect();
    const qreal side = small.width() / ratio;
    const qreal columns[] = {0, edge, whole.width() - edge, whole.width()};
    const qreal rows[] = {0, edge, whole.height() - edge, whole.height()};
    const qreal lines[] = {0, edge, side - edge, side};
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            const QRectF target(QPointF(columns[column], rows[row]), QPointF(columns[column + 1], rows[row + 1]));
            const QRectF source(QPointF(lines[column], lines[row]) * ratio,
                                QPointF(lines[column + 1], lines[row + 1]) * ratio);
            painter.drawImage(target, small, source);
        }
    }
}

} // namespace vorn
