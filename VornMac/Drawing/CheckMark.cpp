#include "VornMac/Drawing/CheckMark.h"

#include <algorithm>

#include <QLineF>
#include <QPainter>
#include <QPainterPath>

namespace vorn {
namespace {

constexpr double discIsWhole = 0.45; // the progress at which the disc is complete

/// The strokes of the check in a 24 by 24 square, drawn up to the fraction `part` of their length.
QPainterPath checkUntil(double part)
{
    const QLineF down(6.9, 12.4, 10.5, 16);
    const QLineF up(down.p2(), QPointF(17.2, 8.6));
    const double length = (down.length() + up.length()) * part;
    QPainterPath path(down.p1());
    path.lineTo(down.pointAt(std::min(length / down.length(), 1.0)));
    if (length > down.length()) path.lineTo(up.pointAt((length - down.length()) / up.length()));
    return path;
}

} // namespace

void CheckMark::paint(QPainter* painter)
{
    const double side = std::min(width(), height());
    const double disc = std::clamp(progress_ / discIsWhole, 0.0, 1.0);
    const double check = std::clamp((progress_ - discIsWhole) / (1 - discIsWhole), 0.0, 1.0);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(color_);
    if (disc > 0) painter->drawEllipse(boundingRect().center(), side / 2 * disc, side / 2 * disc);
    if (check <= 0) return;
    painter->translate(boundingRect().center());
    painter->scale(side / 24, side / 24);
    painter->translate(-12, -12);
    painter->strokePath(checkUntil(check), QPen(inkColor_, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

} // namespace vorn
