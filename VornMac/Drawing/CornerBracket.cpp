#include "VornMac/Drawing/CornerBracket.h"

#include <QPainter>
#include <QPainterPath>

namespace vorn {

void CornerBracket::paint(QPainter* painter)
{
    const qreal edge = thickness_ / 2; // from the item's edge to the middle of the stroke
    const qreal turn = radius_ - edge;
    // The top left bracket; the others are its reflections.
    QPainterPath bracket(QPointF(edge, height() - edge));
    bracket.lineTo(edge, edge + turn);
    bracket.arcTo(QRectF(edge, edge, 2 * turn, 2 * turn), 180, -90);
    bracket.lineTo(width() - edge, edge);

    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(color_, thickness_, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->translate(isRight_ ? width() : 0, isBottom_ ? height() : 0);
    painter->scale(isRight_ ? -1 : 1, isBottom_ ? -1 : 1);
    painter->drawPath(bracket);
}

} // namespace vorn
