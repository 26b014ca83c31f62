#include "VornMac/Drawing/CornerBrackets.h"

#include <QPainter>
#include <QPainterPath>

namespace vorn {

void CornerBrackets::paint(QPainter* painter)
{
    const qreal inset = thickness_ / 2;
    const QRectF frame = boundingRect().adjusted(inset, inset, -inset, -inset);
    const qreal turn = radius_ - inset;
    // The corner at the origin; the others are this one in the mirror.
    QPainterPath bracket(QPointF(0, armLength_));
    bracket.lineTo(0, turn);
    bracket.arcTo(QRectF(0, 0, 2 * turn, 2 * turn), 180, -90);
    bracket.lineTo(armLength_, 0);

    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(color_, thickness_, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    for (const QPointF& corner : {frame.topLeft(), frame.topRight(), frame.bottomRight(), frame.bottomLeft()}) {
        painter->save();
        painter->translate(corner);
        painter->scale(corner.x() > frame.center().x() ? -1 : 1, corner.y() > frame.center().y() ? -1 : 1);
        painter->drawPath(bracket);
        painter->restore();
    }
}

} // namespace vorn
