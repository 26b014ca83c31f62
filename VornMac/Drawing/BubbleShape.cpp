#include "VornMac/Drawing/BubbleShape.h"

#include <algorithm>

#include <QPainter>
#include <QPainterPath>

namespace vorn {
namespace {

constexpr qreal largestRadius = 18;
constexpr qreal tailWidth = 6; // kept free on both sides, so that bubbles with and without a tail line up

/// At the right bottom corner of `body`: down its side to a point outside, and back under the corner.
QPainterPath tailOf(const QRectF& body)
{
    const qreal right = body.right();
    const qreal bottom = body.bottom();
    QPainterPath tail(QPointF(right - largestRadius, bottom - largestRadius));
    tail.lineTo(right, bottom - largestRadius);
    tail.cubicTo(right, bottom - 6, right + 2, bottom - 2, right + tailWidth, bottom);
    tail.cubicTo(right + 1, bottom + 0.5, right - 4, bottom - 0.5, right - 7.5, bottom - 3.5); // on the corner's arc
    tail.closeSubpath();
    return tail;
}

} // namespace

BubbleShape::BubbleShape(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    connect(this, &BubbleShape::looksChanged, this, [this] { update(); });
}

void BubbleShape::paint(QPainter* painter)
{
    const QRectF body = boundingRect().adjusted(tailWidth, 0, -tailWidth, 0);
    const qreal radius = std::min(largestRadius, body.height() / 2);
    QPainterPath shape;
    shape.setFillRule(Qt::WindingFill);
    shape.addRoundedRect(body, radius, radius);
    if (tail_ != NoTail) shape = shape.united(tailOf(body));
    painter->setRenderHint(QPainter::Antialiasing);
    if (tail_ == LeftTail) {
        painter->translate(boundingRect().width(), 0);
        painter->scale(-1, 1);
    }
    painter->fillPath(shape, color_);
}

} // namespace vorn
