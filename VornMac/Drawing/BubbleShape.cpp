#include "VornMac/Drawing/BubbleShape.h"

#include <algorithm>

#include <QPainter>
#include <QPainterPath>

namespace vorn {
namespace {

constexpr qreal largestRadius = 18;

/// `body` with a tail that curls out of its bottom right corner. The outline is smooth everywhere except at the tip.
QPainterPath tailed(const QRectF& body, qreal radius)
{
    const qreal right = body.right();
    const qreal bottom = body.bottom();
    QPainterPath shape(QPointF(right - radius, body.top()));
    shape.arcTo(QRectF(right - 2 * radius, body.top(), 2 * radius, 2 * radius), 90, -90);
    shape.lineTo(right, bottom - 14);
    shape.cubicTo(right, bottom - 6, right + 3, bottom - 2, right + BubbleShape::tailWidth, bottom - 0.8);
    shape.cubicTo(right + 5, bottom, right + 2, bottom, right - 4, bottom);
    shape.lineTo(body.left() + radius, bottom);
    shape.arcTo(QRectF(body.left(), bottom - 2 * radius, 2 * radius, 2 * radius), 270, -90);
    shape.arcTo(QRectF(body.left(), body.top(), 2 * radius, 2 * radius), 180, -90);
    shape.closeSubpath();
    return shape;
}

QPainterPath rounded(const QRectF& body, qreal radius)
{
    QPainterPath shape;
    shape.addRoundedRect(body, radius, radius);
    return shape;
}

} // namespace

void BubbleShape::paint(QPainter* painter)
{
    const QRectF body = boundingRect().adjusted(tailWidth, 0, -tailWidth, 0);
    const qreal radius = std::min(largestRadius, body.height() / 2);
    const QPainterPath shape = tail_ == NoTail ? rounded(body, radius) : tailed(body, radius);
    painter->setRenderHint(QPainter::Antialiasing);
    if (tail_ == LeftTail) {
        painter->translate(boundingRect().width(), 0);
        painter->scale(-1, 1);
    }
    painter->fillPath(shape, color_);
}

} // namespace vorn
